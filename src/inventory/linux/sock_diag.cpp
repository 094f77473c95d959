#include "inventory/linux/sock_diag.h"

#include "inventory/linux/netlink_dump.h"
#include "posix/load.h"

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/rtnetlink.h>
#include <linux/sock_diag.h>
#include <netinet/tcp.h>

#include <algorithm>
#include <cstring>
#include <span>

namespace zenlot {
namespace {

struct DumpRequest {
    nlmsghdr header;
    inet_diag_req_v2 body;
};
static_assert(sizeof(DumpRequest) == NLMSG_LENGTH(sizeof(inet_diag_req_v2)));

// Bits of states that a kernel doesn't know do no harm; among them is the one of bound sockets that
// neither listen nor connect.
DumpRequest dumpRequest(AddressFamily family, unsigned states, std::optional<std::uint16_t> port) {
    DumpRequest request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.body.sdiag_family = family == AddressFamily::ipv6 ? AF_INET6 : AF_INET;
    request.body.sdiag_protocol = IPPROTO_TCP;
    request.body.idiag_states = states;
    request.body.id.idiag_sport = htons(port.value_or(0));
    return request;
}

// A connection that only waits for its time to pass has no descriptor, and a busy server leaves
// many thousands of them.
unsigned statesIn(SocketScope scope) {
    return scope == SocketScope::listening ? 1U << TCP_LISTEN : ~(1U << TCP_TIME_WAIT);
}

AddressFamily familyOf(const inet_diag_msg& message) {
    return message.idiag_family == AF_INET6 ? AddressFamily::ipv6 : AddressFamily::ipv4;
}

KernelTcpSocket tcpSocketOf(std::span<const std::byte> content) {
    const auto message = loadAt<inet_diag_msg>(content);
    return {{familyOf(message), tcpStateFromKernel(message.idiag_state),
             ntohs(message.id.idiag_sport), ntohs(message.id.idiag_dport)},
            message.idiag_uid,
            message.idiag_inode};
}

// The value of an attribute; none when it is missing or shorter.
template <typename Value>
std::optional<Value> attribute(std::span<const std::byte> attributes, unsigned short type) {
    while (attributes.size() >= sizeof(rtattr)) {
        const auto header = loadAt<rtattr>(attributes);
        if (header.rta_len < sizeof header || header.rta_len > attributes.size())
            return std::nullopt;
        if (header.rta_type == type && header.rta_len >= sizeof header + sizeof(Value))
            return loadAt<Value>(attributes, sizeof header);
        attributes =
            attributes.subspan(std::min<std::size_t>(RTA_ALIGN(header.rta_len), attributes.size()));
    }
    return std::nullopt;
}

IpAddress localAddressOf(const inet_diag_msg& message) {
    IpAddress address;
    address.family = familyOf(message);
    const std::size_t length = address.family == AddressFamily::ipv6 ? 16 : 4;
    std::memcpy(address.bytes.data(), &message.id.idiag_src, length);
    return address;
}

bool isV6Only(std::span<const std::byte> attributes) {
    return attribute<std::uint8_t>(attributes, INET_DIAG_SKV6ONLY).value_or(0) != 0;
}

PortUse portUseOf(std::span<const std::byte> content) {
    constexpr std::uint8_t kTimeWaitTimer = 3;
    const auto message = loadAt<inet_diag_msg>(content);
    PortUse use;
    use.state = tcpStateFromKernel(message.idiag_state);
    use.address = localAddressOf(message);
    use.port = ntohs(message.id.idiag_sport);
    use.foreignPort = ntohs(message.id.idiag_dport);
    use.inode = message.idiag_inode;
    if (message.idiag_timer == kTimeWaitTimer)
        use.remaining = std::chrono::milliseconds(message.idiag_expires);
    use.isV6Only = isV6Only(content.subspan(sizeof message));
    return use;
}

ListeningSocket listeningSocketOf(std::span<const std::byte> content) {
    const auto message = loadAt<inet_diag_msg>(content);
    ListeningSocket socket;
    socket.address = localAddressOf(message);
    socket.port = ntohs(message.id.idiag_sport);
    socket.ownerUid = message.idiag_uid;
    socket.inode = message.idiag_inode;
    const auto attributes = content.subspan(sizeof message);
    socket.isV6Only = isV6Only(attributes);
    socket.controlGroup = attribute<std::uint64_t>(attributes, INET_DIAG_CGROUP_ID).value_or(0);
    return socket;
}

template <typename Socket>
std::optional<std::vector<Socket>> dump(NetlinkTransport& transport, const DumpRequest& request,
                                        Socket (*socketOf)(std::span<const std::byte>)) {
    std::vector<Socket> sockets;
    const bool isWhole = readNetlinkDump(
        transport, std::as_bytes(std::span(&request, 1)), [&sockets] { sockets.clear(); },
        [&sockets, socketOf](std::uint16_t type, std::span<const std::byte> content) {
            if (type != SOCK_DIAG_BY_FAMILY)
                return true;
            if (content.size() < sizeof(inet_diag_msg))
                return false;
            sockets.push_back(socketOf(content));
            return true;
        });
    return isWhole ? std::optional(std::move(sockets)) : std::nullopt;
}

} // namespace

std::optional<std::vector<KernelTcpSocket>> dumpTcpSockets(NetlinkTransport& transport,
                                                           AddressFamily family, SocketScope scope,
                                                           std::optional<std::uint16_t> port) {
    return dump(transport, dumpRequest(family, statesIn(scope), port), tcpSocketOf);
}

std::optional<std::vector<ListeningSocket>>
dumpListeningSockets(NetlinkTransport& transport, AddressFamily family,
                     std::optional<std::uint16_t> port) {
    return dump(transport, dumpRequest(family, 1U << TCP_LISTEN, port), listeningSocketOf);
}

std::optional<std::vector<PortUse>> dumpPortUses(NetlinkTransport& transport, AddressFamily family,
                                                 std::uint16_t port) {
    auto uses = dump(transport, dumpRequest(family, ~(1U << TCP_LISTEN), port), portUseOf);
    if (uses)
        std::erase_if(*uses, [port](const PortUse& use) {
            return use.state == TcpState::listen || use.port != port;
        });
    return uses;
}

} // namespace zenlot
