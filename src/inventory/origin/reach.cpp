#include "inventory/origin/reach.h"

#include <arpa/inet.h>

#include <algorithm>
#include <array>

namespace zenlot {

bool isLoopback(const IpAddress& address) {
    if (address.family == AddressFamily::ipv4)
        return address.bytes[0] == 127;
    in6_addr number{};
    std::ranges::copy(address.bytes, number.s6_addr);
    return IN6_IS_ADDR_LOOPBACK(&number) ||
           (IN6_IS_ADDR_V4MAPPED(&number) && number.s6_addr[12] == 127);
}

Reach reachOf(std::span<const ListeningSocket> sockets) {
    if (sockets.empty())
        return Reach::unknown;
    const bool isLocal = std::ranges::all_of(
        sockets, [](const ListeningSocket& socket) { return isLoopback(socket.address); });
    return isLocal ? Reach::thisMachine : Reach::network;
}

std::string addressText(const IpAddress& address) {
    std::array<char, INET6_ADDRSTRLEN> text{};
    const int family = address.family == AddressFamily::ipv6 ? AF_INET6 : AF_INET;
    return ::inet_ntop(family, address.bytes.data(), text.data(), text.size()) ? text.data() : "";
}

} // namespace zenlot
