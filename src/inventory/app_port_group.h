// The ports of one application bundle, or one port whose owner lies in none.
#pragma once

#include "inventory/occupied_port.h"

#include <optional>
#include <string>
#include <vector>

namespace zenlot {

struct AppPortGroup {
    std::optional<std::string> bundlePath;
    std::vector<OccupiedPort> ports;

    // bundlePath, else the first port's id. A group that has neither gets a new identifier on
    // every call: it has no stable identity.
    std::string id() const;

    friend bool operator==(const AppPortGroup&, const AppPortGroup&) = default;
};

} // namespace zenlot
