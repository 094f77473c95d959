// Finds a control group by its number, which the kernel tells of every socket, also of those whose
// processes the user may not look into. Of a system service it gives the name and the processes.
#pragma once

#include "inventory/process_tables.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zenlot {

struct ControlGroup {
    std::string name; // of its folder, such as nginx.service
    std::vector<ProcessId> processes;

    friend bool operator==(const ControlGroup&, const ControlGroup&) = default;
};

// None where the groups are not to be seen, as in most containers. Looks at some thousand folders
// at the most.
std::optional<ControlGroup> findControlGroup(std::uint64_t id,
                                             const std::string& root = "/sys/fs/cgroup");

// The folder in which the unified hierarchy begins: older systems have it beside the others.
std::string unifiedControlGroups(const std::string& root = "/sys/fs/cgroup");

// The paths of all control groups by their numbers, from the beginning of the unified hierarchy.
std::map<std::uint64_t, std::string> controlGroupPaths(const std::string& unifiedRoot);

} // namespace zenlot
