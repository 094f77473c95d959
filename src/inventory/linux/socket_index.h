// Finds a socket by its inode number. Built once for a scan and asked for every socket descriptor
// of every process, so it is a flat table without allocations per entry.
#pragma once

#include "inventory/linux/kernel_tcp_socket.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zenlot {

class SocketIndex {
  public:
    SocketIndex() = default;
    // Sockets without an inode can't be found and are left out.
    explicit SocketIndex(const std::vector<KernelTcpSocket>& sockets);

    // Null when there is no such socket.
    const TcpSocket* find(std::uint64_t inode) const;

  private:
    struct Slot {
        std::uint64_t inode{0};
        TcpSocket socket;
    };

    std::size_t slotFor(std::uint64_t inode) const;

    std::vector<Slot> slots_; // a power of two, at most half full
};

} // namespace zenlot
