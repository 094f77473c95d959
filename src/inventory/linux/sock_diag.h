// Reads the kernel's TCP sockets through its socket diagnostics (NETLINK_SOCK_DIAG).
#pragma once

#include "inventory/linux/kernel_tcp_socket.h"
#include "inventory/linux/netlink_transport.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace zenlot {

// The request for a dump of the sockets of a family, on one local port or on all.
std::vector<std::byte> tcpDumpRequest(AddressFamily family, SocketScope scope,
                                      std::optional<std::uint16_t> port);

enum class DumpProgress : std::uint8_t {
    more,        // the dump goes on in the next datagram
    done,        // the dump is whole
    interrupted, // the dump is at its end, but the table changed while it was made
    failed,      // the kernel refused, or what it sent makes no sense
};

// Appends the sockets of one datagram of a dump. `wasInterrupted` carries the kernel's mark of an
// inconsistent dump from one datagram to the next; start with false.
DumpProgress decodeSockDiag(std::span<const std::byte> datagram, bool& wasInterrupted,
                            std::vector<KernelTcpSocket>& sockets);

// The sockets of a family in the kernel's order; none when the kernel has no socket
// diagnostics. An interrupted dump is made again a few times; the last attempt then stands as it
// is, since a table that never rests has no consistent picture.
std::optional<std::vector<KernelTcpSocket>> dumpTcpSockets(NetlinkTransport& transport,
                                                           AddressFamily family, SocketScope scope,
                                                           std::optional<std::uint16_t> port);

} // namespace zenlot
