// Reads the listening sockets with their addresses. readTcpSockets is cheaper for those who need
// no address.
#pragma once

#include "inventory/linux/netlink_transport.h"
#include "inventory/linux/proc_files.h"
#include "inventory/listening_socket.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace zenlot {

// On one port or on all, of both families, through the socket diagnostics or out of /proc/net where
// they fail: there neither the control groups are known nor whether a socket leaves IPv4 to others.
std::vector<ListeningSocket> readListeningSockets(const ProcFiles& procFiles,
                                                  NetlinkTransport& transport,
                                                  std::optional<std::uint16_t> port = std::nullopt);

} // namespace zenlot
