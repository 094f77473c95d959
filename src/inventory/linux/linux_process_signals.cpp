#include "inventory/linux/linux_process_signals.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace zenlot {

bool LinuxProcessSignals::send(const ProcessIdentity& process, Signal signal) const {
    const ProcessId pid = processIdOf(process.pid);
    if (pid == 0 || !process.startTime)
        return false;
    // Held before it is looked at: should its id have passed on by the look, the start is another.
    const FileDescriptor held(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    if (lookAtProcess(pinner_, {process, {}}).obstacle != ForceQuitObstacle::none)
        return false;
    const int number = signal == Signal::kill ? SIGKILL : SIGTERM;
    if (!held)
        return ::kill(pid, number) == 0;
    return ::syscall(SYS_pidfd_send_signal, held.get(), number, nullptr, 0) == 0;
}

} // namespace zenlot
