#include "inventory/darwin/darwin_process_pinner.h"

#include "inventory/darwin/process_owner_query.h"
#include "inventory/darwin/process_queries.h"
#include "inventory/process_names.h"

#include <algorithm>
#include <csignal>

namespace zenlot {

namespace {

class DarwinPinnedProcess final : public PinnedProcess {
  public:
    DarwinPinnedProcess(const DarwinCalls& calls, ProcessId pid, const ProcessOwner& owner)
        : calls_(calls), pid_(pid), owner_(owner) {}

    bool hasEnded() const override { return !queryProcessOwner(calls_, pid_); }

    std::optional<UserId> effectiveUid() const override { return owner_.effectiveUid; }

    std::optional<std::int64_t> startTime() const override { return owner_.startTime.count(); }

    std::optional<std::chrono::system_clock::time_point> startedAt() const override {
        return std::chrono::system_clock::time_point(owner_.startTime);
    }

    bool isServiceManager() const override {
        return processNameOf(queryExecutablePath(calls_, pid_)) == "launchd";
    }

    bool listensOn(std::uint16_t port) const override {
        return std::ranges::any_of(queryTcpSockets(calls_, pid_, queryDescriptors(calls_, pid_)),
                                   [port](const TcpSocket& socket) {
                                       return socket.state == TcpState::listen &&
                                              socket.localPort == port;
                                   });
    }

    bool kill() override { return calls_.kill(pid_, SIGKILL) == 0; }

  private:
    const DarwinCalls& calls_;
    ProcessId pid_;
    ProcessOwner owner_;
};

} // namespace

DarwinProcessPinner::DarwinProcessPinner(const DarwinCalls& calls) : calls_(calls) {}

std::unique_ptr<PinnedProcess> DarwinProcessPinner::pin(ProcessId pid) const {
    // To kill(), such an id is not a process but a whole group of them.
    if (pid <= 0)
        return nullptr;
    const std::optional<ProcessOwner> owner = queryProcessOwner(calls_, pid);
    if (!owner)
        return nullptr;
    return std::make_unique<DarwinPinnedProcess>(calls_, pid, *owner);
}

} // namespace zenlot
