// One process that holds a listening port, as the lookup of that port returns it.
#pragma once

#include "inventory/occupied_port.h"
#include "inventory/uuid.h"

#include <cstdint>
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

    // The row for a record: the display name is worked out afresh from the path, the rest copied.
    static PortProcess fromOccupiedPort(const OccupiedPort& record);

    friend bool operator==(const PortProcess&, const PortProcess&) = default;
};

} // namespace zenlot
