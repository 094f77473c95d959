// Finds a control group by its number, which the kernel tells of every socket, also of those whose
// processes the user may not look into. Of a system service it gives the name and the processes.
#pragma once

#include "inventory/process_tables.h"

#include <cstdint>
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

} // namespace zenlot
