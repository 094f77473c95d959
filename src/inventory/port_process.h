// One process that holds a listening port, as the lookup of that port returns it.
#pragma once

#include "inventory/force_quit.h"
#include "inventory/occupied_port.h"
#include "inventory/uuid.h"

#include <cstdint>
#include <optional>
#include <string>

namespace zenlot {

struct PortProcess {
    Uuid id; // fresh for every row, so two lookups never give equal rows
    std::int64_t pid{0};
    std::string name;
    std::string displayName;
    std::string user;        // a numeric user id in decimal
    std::string fullCommand; // the owner's executable path; no arguments are gathered
    std::string proto;
    std::string state;
    std::string localAddress; // "*:" and the port
    std::int64_t port{0};

    // When the process started, see ProcessIdentity, and why it may not be ended. Both are read
    // when the row is made; who only asks for a sentence leaves them out.
    std::optional<std::int64_t> startTime{};
    ForceQuitObstacle obstacle{ForceQuitObstacle::unknownOwner};
    std::string service{}; // see PortServices; asked for only where there is an obstacle

    // The row for a record: the display name is worked out afresh from the path, the rest copied.
    static PortProcess fromOccupiedPort(const OccupiedPort& record);

    // What is to be ended when the user means this row.
    ForceQuitTarget target() const { return {{pid, startTime}, port}; }

    friend bool operator==(const PortProcess&, const PortProcess&) = default;
};

} // namespace zenlot
