// Decodes the kernel's table of TCP control blocks, the value of the sysctl kTcpPcbListName.
//
// The table is a head, one entry for each socket, and a trailing head:
//
//     head (xinpgen)      at 0: its own length, 32 bits; the first entry follows it
//     entry (xtcpcb64)    at 0: its own length, 32 bits; the next entry follows it
//                         at 20 and 22: foreign and local port, 16 bits, network byte order
//                         at 180 and 252: address family and owner's user id, 32 bits
//
// An entry is packed to 4 bytes and has grown over the years, so the later fields are read only
// from entries that are long enough to hold them. Lengths are not trusted: the first entry whose
// length can't be right ends the table, and those before it are kept.
#pragma once

#include "inventory/process_tables.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace zenlot {

// The entries in table order, connections included; none of them when there is no head to begin
// with. An entry too short to name its family counts as IPv4, and one too short to name its owner
// as owned by `currentUser`.
std::optional<std::vector<TcpTableEntry>> decodeTcpPcbList(std::span<const std::byte> table,
                                                           UserId currentUser);

} // namespace zenlot
