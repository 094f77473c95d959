#include "inventory/linux/listening_sockets.h"

#include "inventory/linux/sock_diag.h"

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <linux/sock_diag.h>

#include <algorithm>
#include <cstring>

namespace zenlot {
namespace {

template <typename Value>
Value load(std::span<const std::byte> bytes, std::size_t offset) {
    Value value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

// The value of an attribute; none when it is missing or shorter.
template <typename Value>
std::optional<Value> attribute(std::span<const std::byte> attributes, unsigned short type) {
    while (attributes.size() >= sizeof(rtattr)) {
        const auto header = load<rtattr>(attributes, 0);
        if (header.rta_len < sizeof header || header.rta_len > attributes.size())
            return std::nullopt;
        if (header.rta_type == type && header.rta_len >= sizeof header + sizeof(Value))
            return load<Value>(attributes, sizeof header);
        attributes =
            attributes.subspan(std::min<std::size_t>(RTA_ALIGN(header.rta_len), attributes.size()));
    }
    return std::nullopt;
}

ListeningSocket socketOf(std::span<const std::byte> message) {
    const auto body = load<inet_diag_msg>(message, 0);
    ListeningSocket socket;
    socket.address.family =
        body.idiag_family == AF_INET6 ? AddressFamily::ipv6 : AddressFamily::ipv4;
    const std::size_t length = socket.address.family == AddressFamily::ipv6 ? 16 : 4;
    std::memcpy(socket.address.bytes.data(), &body.id.idiag_src, length);
    socket.port = ntohs(body.id.idiag_sport);
    socket.ownerUid = body.idiag_uid;
    socket.inode = body.idiag_inode;
    const auto attributes = message.subspan(sizeof body);
    socket.isV6Only = attribute<std::uint8_t>(attributes, INET_DIAG_SKV6ONLY).value_or(0) != 0;
    socket.controlGroup = attribute<std::uint64_t>(attributes, INET_DIAG_CGROUP_ID).value_or(0);
    return socket;
}

} // namespace

bool decodeListeningSockets(std::span<const std::byte> datagram,
                            std::vector<ListeningSocket>& sockets) {
    while (datagram.size() >= sizeof(nlmsghdr)) {
        const auto header = load<nlmsghdr>(datagram, 0);
        if (header.nlmsg_type != SOCK_DIAG_BY_FAMILY || header.nlmsg_len > datagram.size() ||
            header.nlmsg_len < NLMSG_LENGTH(sizeof(inet_diag_msg)))
            return false;
        sockets.push_back(
            socketOf(datagram.subspan(NLMSG_HDRLEN, header.nlmsg_len - NLMSG_HDRLEN)));
        datagram =
            datagram.subspan(std::min<std::size_t>(NLMSG_ALIGN(header.nlmsg_len), datagram.size()));
    }
    return true;
}

std::vector<ListeningSocket> readListeningSockets(NetlinkTransport& transport,
                                                  std::optional<std::uint16_t> port) {
    std::vector<ListeningSocket> sockets;
    for (const AddressFamily family : {AddressFamily::ipv4, AddressFamily::ipv6}) {
        transport.dump(tcpDumpRequest(family, SocketScope::listening, port),
                       [&sockets](std::span<const std::byte> datagram) {
                           return decodeListeningSockets(datagram, sockets);
                       });
    }
    // Kernels of some ages take the port of a request for a wish.
    if (port)
        std::erase_if(sockets,
                      [port](const ListeningSocket& socket) { return socket.port != *port; });
    return sockets;
}

} // namespace zenlot
