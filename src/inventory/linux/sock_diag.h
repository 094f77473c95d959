// Reads the kernel's TCP sockets through its socket diagnostics (NETLINK_SOCK_DIAG).
#pragma once

#include "inventory/linux/kernel_tcp_socket.h"
#include "inventory/linux/netlink_transport.h"
#include "inventory/listening_socket.h"
#include "inventory/origin/origin_sources.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace zenlot {

// The sockets of a family in the kernel's order; none when the kernel refuses, as one without
// socket diagnostics does. See readNetlinkDump for a table that changes meanwhile. Kernels of some
// ages take the port for a wish and give the sockets on others as well.
std::optional<std::vector<KernelTcpSocket>> dumpTcpSockets(NetlinkTransport& transport,
                                                           AddressFamily family, SocketScope scope,
                                                           std::optional<std::uint16_t> port);

// The same of those that listen, with all that is known of them.
std::optional<std::vector<ListeningSocket>> dumpListeningSockets(NetlinkTransport& transport,
                                                                 AddressFamily family,
                                                                 std::optional<std::uint16_t> port);

// Everything on a port that does not listen, also what no process holds any more.
std::optional<std::vector<PortUse>> dumpPortUses(NetlinkTransport& transport, AddressFamily family,
                                                 std::uint16_t port);

} // namespace zenlot
