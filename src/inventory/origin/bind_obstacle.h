// Why a port can't be had although nobody listens on it, or what is special about it.
#pragma once

#include "inventory/origin/origin_sources.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zenlot {

struct BindObstacle {
    enum class Kind : std::uint8_t {
        boundOnly,  // a process has bound a socket to it, and neither listens nor connects
        connection, // it is a connection's own port on this machine
        timeWait,   // the kernel keeps it for a while after a connection
        reserved,   // the system chooses it for nobody; it can be asked for by its number
        privileged, // only privileged programs may have it
    };

    Kind kind{Kind::boundOnly};
    ProcessIdentity holder{}; // with a pid of 0 when it is not to be seen
    std::string holderName{};
    std::size_t count{1}; // of connections
    std::uint16_t foreignPort{0};
    std::chrono::seconds remaining{0}; // of timeWait, until the last has passed

    friend bool operator==(const BindObstacle&, const BindObstacle&) = default;
};

// In the order of the list above. Looks into all processes where a socket has a holder.
std::vector<BindObstacle> bindObstacles(const OriginSources& sources, std::uint16_t port);

// Whether a process has bound the socket, and neither listens nor connects.
bool isBoundOnly(const PortUse& use);

// Whether a list such as "8080,9000-9010" has the port.
bool isInPortList(std::string_view list, std::uint16_t port);

} // namespace zenlot
