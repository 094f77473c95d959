// A TCP socket of this network namespace, as the kernel reports it without naming a process.
#pragma once

#include "inventory/process_tables.h"

#include <cstdint>

namespace zenlot {

struct KernelTcpSocket {
    TcpSocket socket;
    UserId ownerUid{0};
    std::uint64_t inode{0}; // what /proc/PID/fd shows as socket:[inode]; 0 for none

    friend bool operator==(const KernelTcpSocket&, const KernelTcpSocket&) = default;
};

// Which sockets are asked for.
enum class SocketScope : std::uint8_t {
    listening,
    held, // in every state in which a process can still hold a descriptor of it
};

bool isInScope(SocketScope scope, TcpState state);

// The state for a number of the kernel's own list (include/net/tcp_states.h).
TcpState tcpStateFromKernel(unsigned number);

} // namespace zenlot
