// A listening TCP socket with the address that it listens on, and whether two such addresses get
// into each other's way.
#pragma once

#include "inventory/process_tables.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zenlot {

// In network byte order; an IPv4 address fills the first four bytes.
struct IpAddress {
    AddressFamily family{AddressFamily::ipv4};
    std::array<std::uint8_t, 16> bytes{};

    bool isWildcard() const { return bytes == std::array<std::uint8_t, 16>{}; }

    // Of a number such as 127.0.0.1, ::1 or [::1]; none for names.
    static std::optional<IpAddress> parse(std::string_view text);

    friend bool operator==(const IpAddress&, const IpAddress&) = default;
};

struct ListeningSocket {
    IpAddress address;
    bool isV6Only{false}; // an IPv6 wildcard that leaves IPv4 to others
    std::uint16_t port{0};
    UserId ownerUid{0};
    std::uint64_t inode{0};        // what /proc/PID/fd shows as socket:[inode]; 0 for none
    std::uint64_t controlGroup{0}; // the number of its control group; 0 when not known

    friend bool operator==(const ListeningSocket&, const ListeningSocket&) = default;
};

// Whether the kernel would refuse to let a second socket listen on the address and on the port of
// `holder`. An IPv6 wildcard is taken for one that wants IPv4 too, as most servers do.
bool overlaps(const IpAddress& wanted, const ListeningSocket& holder);

} // namespace zenlot
