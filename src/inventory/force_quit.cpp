#include "inventory/force_quit.h"

#include "inventory/occupied_port.h"

#include <unistd.h>

namespace zenlot {
namespace {

constexpr ProcessId kInitProcess = 1;

// Whether the process is the one that is meant. A port tells it as long as no start does.
bool isMeant(const PinnedProcess& process, const ForceQuitTarget& target,
             std::optional<std::int64_t> startTime) {
    if (target.process.startTime)
        return startTime == target.process.startTime;
    return !target.port || (isValidPort(*target.port) &&
                            process.listensOn(static_cast<std::uint16_t>(*target.port)));
}

ForceQuitObstacle obstacleOf(const PinnedProcess& process, std::int64_t pid, UserId currentUser) {
    if (pid == kInitProcess)
        return ForceQuitObstacle::initProcess;
    if (pid == ::getpid())
        return ForceQuitObstacle::ownProcess;
    if (process.isServiceManager())
        return ForceQuitObstacle::serviceManager;
    const std::optional<UserId> owner = process.effectiveUid();
    if (!owner)
        return ForceQuitObstacle::unknownOwner;
    return *owner == currentUser ? ForceQuitObstacle::none : ForceQuitObstacle::anotherUser;
}

// `process` may be null.
ProcessSighting look(const PinnedProcess* process, const ForceQuitTarget& target,
                     UserId currentUser) {
    ProcessSighting sighting{target.process};
    if (processIdOf(target.process.pid) == 0)
        return sighting;
    if (!process || process->hasEnded()) {
        sighting.obstacle = ForceQuitObstacle::gone;
        return sighting;
    }
    const std::optional<std::int64_t> startTime = process->startTime();
    sighting.obstacle = obstacleOf(*process, target.process.pid, currentUser);
    if (startTime && isMeant(*process, target, startTime)) {
        sighting.process.startTime = startTime;
        sighting.startedAt = process->startedAt();
    } else if (startTime && target.process.startTime) {
        sighting.obstacle = ForceQuitObstacle::gone; // this is another one
    } else if (sighting.obstacle == ForceQuitObstacle::none) {
        sighting.obstacle = ForceQuitObstacle::unknownOwner;
    }
    return sighting;
}

// To the calls of the system, other numbers would be whole groups of processes.
std::unique_ptr<PinnedProcess> pin(const ProcessPinner& processes, const ForceQuitTarget& target) {
    const ProcessId pid = processIdOf(target.process.pid);
    return pid == 0 ? nullptr : processes.pin(pid);
}

} // namespace

ProcessSighting lookAtProcess(const ProcessPinner& processes, const ForceQuitTarget& target,
                              UserId currentUser) {
    return look(pin(processes, target).get(), target, currentUser);
}

bool forceQuitProcess(const ProcessPinner& processes, const ForceQuitTarget& target,
                      UserId currentUser) {
    if (!target.process.startTime && !target.port)
        return false;
    const std::unique_ptr<PinnedProcess> process = pin(processes, target);
    return look(process.get(), target, currentUser).obstacle == ForceQuitObstacle::none &&
           process->kill();
}

} // namespace zenlot
