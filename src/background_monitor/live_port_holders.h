// The holders of the machine as it is: in the network of this process by socket diagnostics, in
// another one by what /proc shows of it through one of the user's processes there.
#pragma once

#include "background_monitor/attempt_reader.h"
#include "background_monitor/live_machine.h"
#include "background_monitor/port_holders.h"
#include "inventory/linux/netlink_transport.h"
#include "inventory/linux/proc_files.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace zenlot {

// The address that was asked for.
IpAddress addressOf(const BindEvent& event);

// Whether the socket keeps the other from the address, on the same port of the same network.
bool standsInTheWay(const ListeningSocket& socket, const BindEvent& refused);

class LivePortHolders final : public PortHolders {
  public:
    // The references must outlive the object.
    LivePortHolders(const LiveMachine& machine, const AttemptReader& attempts);

    HolderAnswer holderFor(const BindEvent& refused) const override;
    bool isKnownToWant(ProcessId pid, std::uint16_t port) const override;
    std::size_t commandKeyOf(ProcessId pid) const override;
    bool isShellOfTerminal(ProcessId pid) const override;

    // Whether it happened in the network of this process.
    bool isOfOwnNetwork(const BindEvent& event) const;

  private:
    void addBoundSockets(std::uint16_t port, std::vector<ListeningSocket>& sockets) const;
    std::optional<std::vector<ListeningSocket>> listenersOf(const BindEvent& refused) const;
    std::optional<ProcessId> someoneIn(std::uint32_t network, const BindEvent& refused) const;
    std::vector<ProcessId> ancestorsOf(const BindEvent& refused) const;

    const LiveMachine& machine_;
    const AttemptReader& attempts_;
    std::uint32_t ownNetwork_;
    ProcFiles procFiles_;
    mutable SockDiagTransport transport_;
};

} // namespace zenlot
