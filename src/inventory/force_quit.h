// Ends a process of the current user, at once.
#pragma once

#include "inventory/process_tables.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace zenlot {

// One process, held so that its id can't come to mean another one.
class PinnedProcess {
  public:
    PinnedProcess() = default;
    PinnedProcess(const PinnedProcess&) = delete;
    PinnedProcess& operator=(const PinnedProcess&) = delete;
    virtual ~PinnedProcess() = default;

    // None when the process has ended or can't be inspected.
    virtual std::optional<UserId> effectiveUid() const = 0;

    // Sends the signal that can't be caught. False when it was not delivered.
    virtual bool kill() = 0;
};

class ProcessPinner {
  public:
    ProcessPinner() = default;
    ProcessPinner(const ProcessPinner&) = delete;
    ProcessPinner& operator=(const ProcessPinner&) = delete;
    virtual ~ProcessPinner() = default;

    // Null when there is no such process.
    virtual std::unique_ptr<PinnedProcess> pin(ProcessId pid) const = 0;
};

// True when the kill signal was delivered. A process whose effective user is not `currentUser` is
// never signalled. Does not ask, does not wait for the end of the process.
bool forceQuitProcess(const ProcessPinner& processes, std::int64_t pid,
                      UserId currentUser = currentUserId());

} // namespace zenlot
