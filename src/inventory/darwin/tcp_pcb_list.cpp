#include "inventory/darwin/tcp_pcb_list.h"

#include "inventory/darwin/kernel_records.h"
#include "posix/load.h"

#include <arpa/inet.h>

#include <cstdint>

namespace zenlot {

namespace {

constexpr std::size_t kForeignPortOffset = 20;
constexpr std::size_t kLocalPortOffset = 22;
constexpr std::size_t kFamilyOffset = 180;
constexpr std::size_t kOwnerUidOffset = 252;

// The trailing head has this length, which no entry has.
constexpr std::size_t kHeadLength = 24;
constexpr std::size_t kMaximumEntryLength = 8191;

// An entry that ends right behind the field counts as one without it: a field is read only where
// the entry goes on.
constexpr std::size_t kMaximumLengthWithoutFamily = kFamilyOffset + 4;
constexpr std::size_t kMaximumLengthWithoutOwner = kOwnerUidOffset + 4;

TcpTableEntry decodeEntry(std::span<const std::byte> bytes, UserId currentUser) {
    TcpTableEntry entry;
    entry.foreignPort = ntohs(loadAt<std::uint16_t>(bytes, kForeignPortOffset));
    entry.localPort = ntohs(loadAt<std::uint16_t>(bytes, kLocalPortOffset));
    if (bytes.size() > kMaximumLengthWithoutFamily &&
        loadAt<std::uint32_t>(bytes, kFamilyOffset) == kAddressFamilyIpv6)
        entry.family = AddressFamily::ipv6;
    entry.ownerUid = bytes.size() > kMaximumLengthWithoutOwner
                         ? loadAt<std::uint32_t>(bytes, kOwnerUidOffset)
                         : currentUser;
    return entry;
}

} // namespace

std::optional<std::vector<TcpTableEntry>> decodeTcpPcbList(std::span<const std::byte> table,
                                                           UserId currentUser) {
    if (table.size() < sizeof(std::uint32_t))
        return std::nullopt;
    const std::size_t headLength = loadAt<std::uint32_t>(table);
    if (headLength < sizeof(std::uint32_t) || headLength >= table.size())
        return std::nullopt;

    std::vector<TcpTableEntry> entries;
    std::span<const std::byte> rest = table.subspan(headLength);
    while (rest.size() >= kHeadLength) {
        const std::size_t length = loadAt<std::uint32_t>(rest);
        if (length <= kHeadLength || length > kMaximumEntryLength || length > rest.size())
            break;
        entries.push_back(decodeEntry(rest.first(length), currentUser));
        rest = rest.subspan(length);
    }
    return entries;
}

} // namespace zenlot
