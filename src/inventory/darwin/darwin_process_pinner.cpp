#include "inventory/darwin/darwin_process_pinner.h"

#include "inventory/darwin/process_owner_query.h"

#include <csignal>

namespace zenlot {

namespace {

class DarwinPinnedProcess final : public PinnedProcess {
  public:
    DarwinPinnedProcess(const DarwinCalls& calls, ProcessId pid, UserId effectiveUid)
        : calls_(calls), pid_(pid), effectiveUid_(effectiveUid) {}

    std::optional<UserId> effectiveUid() const override { return effectiveUid_; }

    bool kill() override { return calls_.kill(pid_, SIGKILL) == 0; }

  private:
    const DarwinCalls& calls_;
    ProcessId pid_;
    UserId effectiveUid_;
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
    return std::make_unique<DarwinPinnedProcess>(calls_, pid, owner->effectiveUid);
}

} // namespace zenlot
