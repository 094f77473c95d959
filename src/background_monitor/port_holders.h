// Who stands in the way of a bind() that was refused.
#pragma once

#include "background_monitor/attempt_tracker.h"
#include "bindwatch/bind_stream.h"

#include <cstddef>
#include <cstdint>

namespace zenlot {

struct HolderAnswer {
    enum class Kind : std::uint8_t {
        another, // who is not of the same family
        own,     // the process itself, or its ancestor or descendant
        nobody,  // none listens there: a connection, or a socket that has gone by now
        unseen,  // the processes of that network can't be looked at
    };

    Kind kind{Kind::nobody};
    PortHolder holder; // of `another`
};

class PortHolders {
  public:
    PortHolders() = default;
    PortHolders(const PortHolders&) = delete;
    PortHolders& operator=(const PortHolders&) = delete;
    virtual ~PortHolders() = default;

    // As things are at the moment.
    virtual HolderAnswer holderFor(const BindEvent& refused) const = 0;

    // Whether the process runs a tool that is known to be a server, and to want this port.
    virtual bool isKnownToWant(ProcessId pid, std::uint16_t port) const = 0;

    // Tells the command that a process runs from others of the same name; 0 when it has ended.
    virtual std::size_t commandKeyOf(ProcessId pid) const = 0;

    // Whether the process is the shell of a terminal, which starts what people ask for.
    virtual bool isShellOfTerminal(ProcessId pid) const = 0;
};

} // namespace zenlot
