#include "inventory/linux/sock_diag.h"

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/tcp.h>

#include <cstring>

namespace zenlot {
namespace {

constexpr int kDumpAttempts = 4;

struct DumpRequest {
    nlmsghdr header;
    inet_diag_req_v2 body;
};
static_assert(sizeof(DumpRequest) == NLMSG_LENGTH(sizeof(inet_diag_req_v2)));

// Netlink messages are aligned to four bytes only, and the buffer they lie in to one.
template <typename Value>
Value load(std::span<const std::byte> bytes, std::size_t offset) {
    Value value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

} // namespace

std::vector<std::byte> tcpDumpRequest(AddressFamily family, SocketScope scope,
                                      std::optional<std::uint16_t> port) {
    DumpRequest request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.body.sdiag_family = family == AddressFamily::ipv6 ? AF_INET6 : AF_INET;
    request.body.sdiag_protocol = IPPROTO_TCP;
    // A connection that only waits for its time to pass has no descriptor, and a busy server
    // leaves many thousands of them. Bits of states that a kernel doesn't know do no harm; among
    // them is the one of bound sockets that neither listen nor connect.
    request.body.idiag_states =
        scope == SocketScope::listening ? 1U << TCP_LISTEN : ~(1U << TCP_TIME_WAIT);
    request.body.id.idiag_sport = htons(port.value_or(0));

    std::vector<std::byte> bytes(sizeof request);
    std::memcpy(bytes.data(), &request, sizeof request);
    return bytes;
}

DumpProgress decodeSockDiag(std::span<const std::byte> datagram, bool& wasInterrupted,
                            std::vector<KernelTcpSocket>& sockets) {
    while (datagram.size() >= sizeof(nlmsghdr)) {
        const auto header = load<nlmsghdr>(datagram, 0);
        if (header.nlmsg_len < sizeof header || header.nlmsg_len > datagram.size())
            return DumpProgress::failed;
        if ((header.nlmsg_flags & NLM_F_DUMP_INTR) != 0)
            wasInterrupted = true;
        if (header.nlmsg_type == NLMSG_DONE)
            return wasInterrupted ? DumpProgress::interrupted : DumpProgress::done;
        if (header.nlmsg_type == NLMSG_ERROR)
            return DumpProgress::failed;
        if (header.nlmsg_type == SOCK_DIAG_BY_FAMILY) {
            if (header.nlmsg_len < NLMSG_LENGTH(sizeof(inet_diag_msg)))
                return DumpProgress::failed;
            const auto message = load<inet_diag_msg>(datagram, NLMSG_HDRLEN);
            KernelTcpSocket& socket = sockets.emplace_back();
            socket.socket.family =
                message.idiag_family == AF_INET6 ? AddressFamily::ipv6 : AddressFamily::ipv4;
            socket.socket.state = tcpStateFromKernel(message.idiag_state);
            socket.socket.localPort = ntohs(message.id.idiag_sport);
            socket.socket.foreignPort = ntohs(message.id.idiag_dport);
            socket.ownerUid = message.idiag_uid;
            socket.inode = message.idiag_inode;
        }
        datagram =
            datagram.subspan(std::min<std::size_t>(NLMSG_ALIGN(header.nlmsg_len), datagram.size()));
    }
    return datagram.empty() ? DumpProgress::more : DumpProgress::failed;
}

std::optional<std::vector<KernelTcpSocket>> dumpTcpSockets(NetlinkTransport& transport,
                                                           AddressFamily family, SocketScope scope,
                                                           std::optional<std::uint16_t> port) {
    const std::vector<std::byte> request = tcpDumpRequest(family, scope, port);
    std::vector<KernelTcpSocket> sockets;
    for (int attempt = 0; attempt < kDumpAttempts; ++attempt) {
        sockets.clear();
        bool wasInterrupted = false;
        DumpProgress progress = DumpProgress::more;
        const bool answered = transport.dump(request, [&](std::span<const std::byte> datagram) {
            progress = decodeSockDiag(datagram, wasInterrupted, sockets);
            return progress == DumpProgress::more;
        });
        if (!answered || progress == DumpProgress::failed)
            return std::nullopt;
        if (progress == DumpProgress::done)
            break;
    }
    return sockets;
}

} // namespace zenlot
