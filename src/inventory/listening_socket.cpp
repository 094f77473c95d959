#include "inventory/listening_socket.h"

#include <arpa/inet.h>

#include <algorithm>
#include <string>

namespace zenlot {
namespace {

constexpr std::array<std::uint8_t, 12> kMappedPrefix{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xff, 0xff};

// An IPv4 address in IPv6 dress means the IPv4 address.
IpAddress undressed(const IpAddress& address) {
    if (address.family == AddressFamily::ipv4 ||
        !std::equal(kMappedPrefix.begin(), kMappedPrefix.end(), address.bytes.begin()))
        return address;
    IpAddress inner;
    std::copy_n(address.bytes.begin() + kMappedPrefix.size(), 4, inner.bytes.begin());
    return inner;
}

} // namespace

std::optional<IpAddress> IpAddress::parse(std::string_view text) {
    if (text.starts_with('[') && text.ends_with(']'))
        text = text.substr(1, text.size() - 2);
    const std::string number(text);
    IpAddress address;
    if (::inet_pton(AF_INET, number.c_str(), address.bytes.data()) == 1)
        return address;
    address.family = AddressFamily::ipv6;
    if (::inet_pton(AF_INET6, number.c_str(), address.bytes.data()) == 1)
        return address;
    return std::nullopt;
}

bool overlaps(const IpAddress& wanted, const ListeningSocket& holder) {
    const IpAddress mine = undressed(wanted);
    const IpAddress theirs = undressed(holder.address);
    if (mine.family == theirs.family)
        return mine == theirs || mine.isWildcard() || theirs.isWildcard();
    const bool theirsIsBoth = theirs.family == AddressFamily::ipv6 && !holder.isV6Only;
    const bool mineIsBoth = mine.family == AddressFamily::ipv6;
    return (theirsIsBoth && theirs.isWildcard()) || (mineIsBoth && mine.isWildcard());
}

} // namespace zenlot
