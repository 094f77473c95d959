// What to end, and how, so that a server stays ended: its container, its unit, or the watcher or
// runner that would start it again. Pure: an origin in, a plan out.
//
// Nobody's working place is ever in a plan: no shell, terminal, editor, multiplexer or browser, and
// no manager of a session or of services.
#pragma once

#include "inventory/origin/origin.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zenlot {

struct StopPlan {
    enum class Kind : std::uint8_t { none, container, userUnit, systemUnit, processes };
    // Why there is nothing to do.
    enum class Refusal : std::uint8_t {
        none,
        unknown,     // nobody knows who holds the port
        anotherUser, // and it belongs to no unit or container
        workplace,   // it is a part of an editor, a browser, the session
    };

    Kind kind{Kind::none};
    Refusal refusal{Refusal::unknown};
    std::uint16_t port{0};
    std::string name;                       // of what ends: "npm run dev", "shop-db"
    Container container;                    // to be stopped
    std::vector<Unit> units;                // in this order: who listens for another comes first
    std::vector<std::string> invocations;   // the run that each unit is in
    std::vector<ProcessIdentity> processes; // what would start the others again comes first
    std::vector<ProcessIdentity> owners;    // of the port now
    std::vector<std::uint64_t> sockets;     // on the port now, by inode
    std::string supervisor;                 // that may start it again
    std::size_t clients{0};
    std::vector<std::uint16_t> otherPorts; // that go with it

    friend bool operator==(const StopPlan&, const StopPlan&) = default;
};

StopPlan planStop(const Origin& origin, UserId currentUser = currentUserId());

// One sentence that says what will end and who else is hit; or why nothing can be done.
std::string stopSentence(const StopPlan& plan);

} // namespace zenlot
