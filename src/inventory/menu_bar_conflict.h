// The conflict that the status menu announces.
#pragma once

#include <cstdint>
#include <string>

namespace zenlot {

struct MenuBarConflict {
    std::int64_t port{0};
    std::int64_t pid{0};
    std::string processName;
    std::string displayName;

    friend bool operator==(const MenuBarConflict&, const MenuBarConflict&) = default;
};

} // namespace zenlot
