#include "inventory/linux/socket_index.h"

#include <bit>

namespace zenlot {

SocketIndex::SocketIndex(const std::vector<KernelTcpSocket>& sockets)
    : slots_(sockets.empty() ? 0 : std::bit_ceil(sockets.size() * 2)) {
    for (const KernelTcpSocket& socket : sockets) {
        if (socket.inode != 0)
            slots_[slotFor(socket.inode)] = {socket.inode, socket.socket};
    }
}

const TcpSocket* SocketIndex::find(std::uint64_t inode) const {
    if (slots_.empty() || inode == 0)
        return nullptr;
    const Slot& slot = slots_[slotFor(inode)];
    return slot.inode == inode ? &slot.socket : nullptr;
}

// The kernel hands out inode numbers in sequence, so their low bits spread by themselves; the
// multiplication guards against a stride.
std::size_t SocketIndex::slotFor(std::uint64_t inode) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t place = static_cast<std::size_t>((inode * 0x9E3779B97F4A7C15ULL) >> 32) & mask;
    while (slots_[place].inode != 0 && slots_[place].inode != inode)
        place = (place + 1) & mask;
    return place;
}

} // namespace zenlot
