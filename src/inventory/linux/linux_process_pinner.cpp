#include "inventory/linux/linux_process_pinner.h"

#include "inventory/process_names.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <utility>

namespace zenlot {
namespace {

constexpr std::string_view kServiceManager = "systemd";
constexpr std::string_view kSessionKeeper = "(sd-pam)"; // ends the manager when it ends

class LinuxPinnedProcess final : public PinnedProcess {
  public:
    LinuxPinnedProcess(const ProcFiles& procFiles, const ProcessTables& tables, ProcessId pid,
                       FileDescriptor pidfd)
        : procFiles_(procFiles), tables_(tables), pid_(pid), pidfd_(std::move(pidfd)) {}

    // Not every process that exists is to be seen in /proc.
    bool hasEnded() const override {
        if (pidfd_) {
            pollfd end{pidfd_.get(), POLLIN, 0};
            return ::poll(&end, 1, 0) > 0;
        }
        const auto status = procFiles_.status(pid_);
        return status ? status->hasEnded : ::kill(pid_, 0) != 0 && errno == ESRCH;
    }

    std::optional<UserId> effectiveUid() const override {
        const auto status = procFiles_.status(pid_);
        return status ? std::optional(status->effectiveUid) : std::nullopt;
    }

    std::optional<std::int64_t> startTime() const override {
        const auto stat = procFiles_.stat(pid_);
        return stat ? std::optional(stat->startTicks) : std::nullopt;
    }

    // By its age, since the clock of the wall may have been set after the machine was started.
    std::optional<std::chrono::system_clock::time_point> startedAt() const override {
        const auto stat = procFiles_.stat(pid_);
        timespec sinceBoot{};
        if (!stat || ::clock_gettime(CLOCK_BOOTTIME, &sinceBoot) != 0)
            return std::nullopt;
        const auto tick = std::chrono::nanoseconds(std::chrono::seconds(1)) /
                          std::max(1L, ::sysconf(_SC_CLK_TCK));
        const auto age = std::chrono::seconds(sinceBoot.tv_sec) +
                         std::chrono::nanoseconds(sinceBoot.tv_nsec) -
                         tick * (std::min(stat->startTicks, kLatestTick) + 1);
        return std::chrono::system_clock::now() -
               std::chrono::duration_cast<std::chrono::system_clock::duration>(age);
    }

    // What may not be inspected still has a name. Any program may take that one, and loses by it.
    bool isServiceManager() const override {
        const std::string path = procFiles_.executablePath(pid_);
        if (!path.empty())
            return processNameOf(path) == kServiceManager;
        const std::string name = procFiles_.commandName(pid_);
        return name == kServiceManager || name == kSessionKeeper;
    }

    bool listensOn(std::uint16_t port) const override {
        std::vector<TcpSocket> sockets;
        tables_.beginSnapshot(port)->appendTcpSockets(pid_, sockets);
        return std::ranges::any_of(sockets, [port](const TcpSocket& socket) {
            return socket.state == TcpState::listen && socket.localPort == port;
        });
    }

    bool kill() override {
        if (!pidfd_)
            return ::kill(pid_, SIGKILL) == 0;
        return ::syscall(SYS_pidfd_send_signal, pidfd_.get(), SIGKILL, nullptr, 0) == 0;
    }

  private:
    // Some centuries, at the rate of any clock.
    static constexpr std::int64_t kLatestTick = 1'000'000'000'000;

    const ProcFiles& procFiles_;
    const ProcessTables& tables_;
    ProcessId pid_;
    FileDescriptor pidfd_; // none where they can't be had
};

} // namespace

LinuxProcessPinner::LinuxProcessPinner(const std::string& procRoot)
    : procFiles_(procRoot), tables_(procRoot) {}

std::unique_ptr<PinnedProcess> LinuxProcessPinner::pin(ProcessId pid) const {
    FileDescriptor pidfd(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    // A kernel without pidfds, a filter of system calls that does not know them, too many open
    // files: none of it says that there is no such process.
    if (!pidfd && (errno == ESRCH || errno == EINVAL || (::kill(pid, 0) != 0 && errno == ESRCH)))
        return nullptr;
    return std::make_unique<LinuxPinnedProcess>(procFiles_, tables_, pid, std::move(pidfd));
}

} // namespace zenlot
