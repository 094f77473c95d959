// The ports of one application, or one port whose owner is part of none.
#pragma once

#include "inventory/occupied_port.h"

#include <optional>
#include <string>
#include <vector>

namespace zenlot {

struct AppPortGroup {
    // Where the application's bundle is. On desktops without bundles, what tells the application
    // from others, and then it has a name, and may have an icon of the desktop.
    std::optional<std::string> bundlePath;
    std::vector<OccupiedPort> ports;
    std::string name{};
    std::string icon{};

    // bundlePath, else the first port's id. A group that has neither gets a new identifier on
    // every call: it has no stable identity.
    std::string id() const;

    friend bool operator==(const AppPortGroup&, const AppPortGroup&) = default;
};

} // namespace zenlot
