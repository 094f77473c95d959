// Ends a process of the current user, at once; and tells beforehand which processes may be ended,
// so that nothing is offered which would then be refused.
//
// A process is named by its id and its start, from the moment it is shown to somebody. When it is
// to be ended it is held first, and everything about it is asked again: whatever took its id
// meanwhile is left alone. Never ended are the init process, the manager of a user's services,
// with which the session would go, and this program.
//
//     const ProcessSighting seen = lookAtProcess(processes, {{4312}, 3000});
//     if (seen.obstacle == ForceQuitObstacle::none) // offer it, and once the user has said so:
//         forceQuitProcess(processes, {seen.process, 3000});
#pragma once

#include "inventory/process_identity.h"
#include "inventory/process_tables.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>

namespace zenlot {

// Why a process may not be ended. The numbers travel with notifications inside the program.
enum class ForceQuitObstacle : std::uint8_t {
    none,
    gone,         // it has ended; its id may be another's by now
    unknownOwner, // nobody knows which process is meant, or whose it is
    anotherUser,
    serviceManager,
    initProcess,
    ownProcess,
};

// One process, held so that its id can't come to mean another one.
class PinnedProcess {
  public:
    PinnedProcess() = default;
    PinnedProcess(const PinnedProcess&) = delete;
    PinnedProcess& operator=(const PinnedProcess&) = delete;
    virtual ~PinnedProcess() = default;

    // Also true before its parent has asked how it ended.
    virtual bool hasEnded() const = 0;

    // None when the process can't be inspected.
    virtual std::optional<UserId> effectiveUid() const = 0;

    // As ProcessIdentity has it; none when the process can't be inspected.
    virtual std::optional<std::int64_t> startTime() const = 0;

    // The latest moment at which it can have started, by the clock of the wall.
    virtual std::optional<std::chrono::system_clock::time_point> startedAt() const = 0;

    // Whether it runs the services of a user, or of the system.
    virtual bool isServiceManager() const = 0;

    // Whether it holds a socket that listens on the port. False when that can't be seen.
    virtual bool listensOn(std::uint16_t port) const = 0;

    // Sends the signal that can't be caught. False when it was not delivered.
    virtual bool kill() = 0;
};

class ProcessPinner {
  public:
    ProcessPinner() = default;
    ProcessPinner(const ProcessPinner&) = delete;
    ProcessPinner& operator=(const ProcessPinner&) = delete;
    virtual ~ProcessPinner() = default;

    // Null when there is no such process. May be called from several threads at once.
    virtual std::unique_ptr<PinnedProcess> pin(ProcessId pid) const = 0;
};

// A process that is to be ended, and the port for whose sake.
struct ForceQuitTarget {
    ProcessIdentity process;
    std::optional<std::int64_t> port{};

    friend bool operator==(const ForceQuitTarget&, const ForceQuitTarget&) = default;
};

// What was seen of a process at some moment.
struct ProcessSighting {
    ProcessIdentity process; // with its start, if it is the one that was meant
    ForceQuitObstacle obstacle{ForceQuitObstacle::unknownOwner};
    std::optional<std::chrono::system_clock::time_point> startedAt{}; // as PinnedProcess has it

    friend bool operator==(const ProcessSighting&, const ProcessSighting&) = default;
};

// Looks at a process that is about to be shown. When its start is not known yet, it has to listen
// on the port; without a port, whoever has the id now is the one that is meant.
ProcessSighting lookAtProcess(const ProcessPinner& processes, const ForceQuitTarget& target,
                              UserId currentUser = currentUserId());

// True when the kill signal was delivered. Nothing is sent when there is an obstacle, and neither
// when neither start nor port are known. Does not ask, does not wait for the end of the process.
bool forceQuitProcess(const ProcessPinner& processes, const ForceQuitTarget& target,
                      UserId currentUser = currentUserId());

} // namespace zenlot
