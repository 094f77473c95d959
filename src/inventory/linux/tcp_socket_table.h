// The kernel's TCP sockets of both families: through its socket diagnostics, or out of /proc/net
// where they fail.
#pragma once

#include "inventory/linux/kernel_tcp_socket.h"
#include "inventory/linux/netlink_transport.h"
#include "inventory/linux/proc_files.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace zenlot {

struct TcpSocketTable {
    std::vector<KernelTcpSocket> sockets;      // the IPv4 sockets first
    std::vector<AddressFamily> silentFamilies; // of which neither source told
};

// On one local port or on all. A kernel without IPv6 has told that there are no such sockets.
TcpSocketTable readTcpSockets(const ProcFiles& procFiles, NetlinkTransport& transport,
                              SocketScope scope, std::optional<std::uint16_t> port);

} // namespace zenlot
