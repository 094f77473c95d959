// One listening TCP port and the process that holds it: the unit of the port inventory.
#pragma once

#include "inventory/process_tables.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zenlot {

struct OccupiedPort {
    std::int64_t port{0};
    std::string proto;          // "TCP4" or "TCP6"
    std::string processName;    // last component of executablePath
    std::string displayName;    // what people call the owner
    std::int64_t pid{0};        // 0 when the owner is unknown
    std::string user;           // a numeric user id in decimal, never a login name; may be empty
    std::string executablePath; // absolute; empty when unknown

    // When the owner started, see ProcessIdentity. Only a scan tells; no file has it.
    std::optional<std::int64_t> startTime{};

    // The pid, a colon and the port, such as 4312:3000. A record without an owner has pid 0 in it.
    std::string id() const;

    // Whether `user` is the decimal text of this user id. Text that is no unsigned 32-bit number
    // belongs to nobody.
    bool isCurrentUser(UserId currentUser = currentUserId()) const;

    // The innermost application bundle around executablePath; none when there is none.
    std::optional<std::string> enclosingAppBundlePath() const;

    friend bool operator==(const OccupiedPort&, const OccupiedPort&) = default;
};

// A list that several share and nobody changes.
using SharedPorts = std::shared_ptr<const std::vector<OccupiedPort>>;

// Whether the number can be a TCP port.
constexpr bool isValidPort(std::int64_t port) {
    return port >= 1 && port <= 65535;
}

// The text of OccupiedPort::proto and PortProcess::proto for an address family.
const char* protoName(AddressFamily family);

} // namespace zenlot
