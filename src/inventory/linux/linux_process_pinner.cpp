#include "inventory/linux/linux_process_pinner.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <utility>

namespace zenlot {
namespace {

// The users are read through /proc by number. Should the number have passed to another process in
// between, then the held one has ended, and the signal to it fails.
class LinuxPinnedProcess final : public PinnedProcess {
  public:
    LinuxPinnedProcess(const ProcFiles& procFiles, ProcessId pid, FileDescriptor pidfd)
        : procFiles_(procFiles), pid_(pid), pidfd_(std::move(pidfd)) {}

    std::optional<UserId> effectiveUid() const override {
        const auto status = procFiles_.status(pid_);
        return status && !status->hasEnded ? std::optional(status->effectiveUid) : std::nullopt;
    }

    bool kill() override {
        if (!pidfd_)
            return ::kill(pid_, SIGKILL) == 0;
        return ::syscall(SYS_pidfd_send_signal, pidfd_.get(), SIGKILL, nullptr, 0) == 0;
    }

  private:
    const ProcFiles& procFiles_;
    ProcessId pid_;
    FileDescriptor pidfd_; // none where the kernel has no pidfds
};

} // namespace

LinuxProcessPinner::LinuxProcessPinner(const std::string& procRoot) : procFiles_(procRoot) {}

std::unique_ptr<PinnedProcess> LinuxProcessPinner::pin(ProcessId pid) const {
    FileDescriptor pidfd(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    if (!pidfd && errno != ENOSYS)
        return nullptr;
    return std::make_unique<LinuxPinnedProcess>(procFiles_, pid, std::move(pidfd));
}

} // namespace zenlot
