// How many processors this process may use: those that its affinity leaves it, and no more than
// its control groups give it time for, which is less than the machine has in many a container.
#pragma once

#include <optional>
#include <string>

namespace zenlot {

// At least 1, and at most 8: a scan has no use for more. `root` stands above /proc and /sys.
unsigned availableProcessors(const std::string& root = "/");

// The smallest share of processor time that the control groups of this process and those around
// them allow, as so many processors, rounded up; none when there is no limit, or none to be seen.
std::optional<unsigned> processorQuota(const std::string& root);

} // namespace zenlot
