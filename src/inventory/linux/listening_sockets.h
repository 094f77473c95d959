// Reads the listening sockets with their addresses. readTcpSockets is cheaper for those who need
// no address.
#pragma once

#include "inventory/linux/netlink_transport.h"
#include "inventory/listening_socket.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace zenlot {

// Appends what one datagram of a dump holds. False at the end of the dump, and for a datagram that
// makes no sense.
bool decodeListeningSockets(std::span<const std::byte> datagram,
                            std::vector<ListeningSocket>& sockets);

// On one port or on all, of both families. Empty where the kernel has no socket diagnostics.
std::vector<ListeningSocket> readListeningSockets(NetlinkTransport& transport,
                                                  std::optional<std::uint16_t> port = std::nullopt);

} // namespace zenlot
