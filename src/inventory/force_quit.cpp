#include "inventory/force_quit.h"

#include <limits>

namespace zenlot {

bool forceQuitProcess(const ProcessPinner& processes, std::int64_t pid, UserId currentUser) {
    // kill() gives 0 and negative numbers the meaning of whole process groups.
    if (pid < 1 || pid > std::numeric_limits<ProcessId>::max())
        return false;
    const std::unique_ptr<PinnedProcess> process = processes.pin(static_cast<ProcessId>(pid));
    return process && process->effectiveUid() == currentUser && process->kill();
}

} // namespace zenlot
