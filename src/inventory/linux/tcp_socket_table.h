// The kernel's TCP sockets of both families: through its socket diagnostics, or out of /proc/net
// where it has none.
#pragma once

#include "inventory/linux/kernel_tcp_socket.h"
#include "inventory/linux/netlink_transport.h"
#include "inventory/linux/proc_files.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace zenlot {

// On one local port or on all, the IPv4 sockets first. Empty when the kernel gives nothing.
std::vector<KernelTcpSocket> readTcpSockets(const ProcFiles& procFiles, NetlinkTransport& transport,
                                            SocketScope scope, std::optional<std::uint16_t> port);

} // namespace zenlot
