// Which port a development server wants, as far as its command line and its environment tell. Pure.
//
//     const std::optional<WantedPort> wanted = wantedPort(*runtime, *invocation, environment);
#pragma once

#include "background_monitor/runtime_table.h"
#include "inventory/listening_socket.h"
#include "inventory/programs/invocation.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zenlot {

struct WantedPort {
    enum class Source : std::uint8_t {
        unknown,     // nothing tells; `port` is 0
        usual,       // what the tool takes when nobody says otherwise
        environment, // a variable
        argument,
    };

    Source source{Source::unknown};
    std::uint16_t port{0};
    // Empty when the address is not known; it then overlaps with every other.
    std::vector<IpAddress> addresses;

    bool isExplicit() const { return source >= Source::environment; }

    friend bool operator==(const WantedPort&, const WantedPort&) = default;
};

// The value of a variable; empty when it is not set.
using EnvironmentQuery = std::function<std::string(const std::string& name)>;

// None for a process that serves nothing, that leaves the choice of the port to the kernel, or that
// listens on a socket of another kind. Of a program that may name its port itself only the
// arguments count here: which variables it asks for, its source tells.
std::optional<WantedPort> wantedPort(const Runtime& runtime, const Invocation& invocation,
                                     const EnvironmentQuery& environment);

// The configuration file that the arguments name; empty when they name none.
std::string namedConfig(const Runtime& runtime, const Invocation& invocation);

} // namespace zenlot
