// The conflict that the status menu announces.
#pragma once

#include "inventory/force_quit.h"

#include <cstdint>
#include <optional>
#include <string>

namespace zenlot {

struct MenuBarConflict {
    std::int64_t port{0};
    std::int64_t pid{0};
    std::string processName;
    std::string displayName;
    std::optional<std::int64_t> startTime{}; // of the process, see ProcessIdentity
    ForceQuitObstacle obstacle{ForceQuitObstacle::none};

    friend bool operator==(const MenuBarConflict&, const MenuBarConflict&) = default;
};

} // namespace zenlot
