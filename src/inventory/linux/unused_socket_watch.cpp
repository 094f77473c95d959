#include "inventory/linux/unused_socket_watch.h"

#include "posix/load.h"

#include <arpa/inet.h>
#include <linux/filter.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace zenlot {
namespace {

constexpr std::size_t kMessageStart = NLMSG_HDRLEN;
constexpr std::uint16_t kFirstPortOfKernelsChoice = 32768;
constexpr std::uint16_t kNameServerPort = 53;
// The first attribute is the protocol, in one byte.
constexpr std::size_t kProtocolType =
    kMessageStart + sizeof(inet_diag_msg) + offsetof(nlattr, nla_type);
constexpr std::size_t kProtocol = kMessageStart + sizeof(inet_diag_msg) + NLA_HDRLEN;

// Whoever waits for the descriptor has other things to do as well.
constexpr int kMostEndsAtOnce = 1024;

constexpr std::uint32_t kPeerPort =
    kMessageStart + offsetof(inet_diag_msg, id) + offsetof(inet_diag_sockid, idiag_dport);

// Passes TCP sockets without a peer, and UDP sockets whose peer is a name server.
constexpr std::array<sock_filter, 8> kFilter{{
    BPF_STMT(BPF_LD | BPF_B | BPF_ABS, kProtocol),
    BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, IPPROTO_UDP, 2, 0),
    BPF_STMT(BPF_LD | BPF_H | BPF_ABS, kPeerPort),
    BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, 0, 2, 3),
    BPF_STMT(BPF_LD | BPF_H | BPF_ABS, kPeerPort),
    BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, kNameServerPort, 0, 1),
    BPF_STMT(BPF_RET | BPF_K, 0xffffffff),
    BPF_STMT(BPF_RET | BPF_K, 0),
}};

bool join(int socket, int group) {
    return ::setsockopt(socket, SOL_NETLINK, NETLINK_ADD_MEMBERSHIP, &group, sizeof group) == 0;
}

FileDescriptor watchSocket() {
    FileDescriptor descriptor(
        ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_SOCK_DIAG));
    sockaddr_nl self{};
    self.nl_family = AF_NETLINK;
    auto filter = kFilter;
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    // The filter stands before the first message can come.
    if (!descriptor ||
        ::setsockopt(descriptor.get(), SOL_SOCKET, SO_ATTACH_FILTER, &program, sizeof program) !=
            0 ||
        ::bind(descriptor.get(), reinterpret_cast<const sockaddr*>(&self), sizeof self) != 0 ||
        !join(descriptor.get(), SKNLGRP_INET_TCP_DESTROY) ||
        !join(descriptor.get(), SKNLGRP_INET6_TCP_DESTROY))
        return {};
    // Without them there is less to take back, and nothing else is lost.
    join(descriptor.get(), SKNLGRP_INET_UDP_DESTROY);
    join(descriptor.get(), SKNLGRP_INET6_UDP_DESTROY);
    return descriptor;
}

bool isUdp(std::span<const std::byte> datagram) {
    return datagram.size() > kProtocol &&
           loadAt<std::uint16_t>(datagram, kProtocolType) == INET_DIAG_PROTOCOL &&
           loadAt<std::uint8_t>(datagram, kProtocol) == IPPROTO_UDP;
}

} // namespace

std::optional<UnusedSocket> decodeUnusedSocket(std::span<const std::byte> datagram) {
    if (datagram.size() < kMessageStart + sizeof(inet_diag_msg))
        return std::nullopt;
    const auto message = loadAt<inet_diag_msg>(datagram, kMessageStart);
    const AddressFamily family =
        message.idiag_family == AF_INET6 ? AddressFamily::ipv6 : AddressFamily::ipv4;
    if (isUdp(datagram))
        return ntohs(message.id.idiag_dport) == kNameServerPort
                   ? std::optional(UnusedSocket{UnusedSocket::Kind::nameQuestion, family, 0})
                   : std::nullopt;
    if (message.idiag_state != TCP_CLOSE || message.id.idiag_dport != 0)
        return std::nullopt;
    const std::uint16_t port = ntohs(message.id.idiag_sport);
    if (port == 0) {
        in6_addr destination{};
        std::memcpy(&destination, &message.id.idiag_dst, sizeof destination);
        if (IN6_IS_ADDR_V4MAPPED(&destination))
            return UnusedSocket{UnusedSocket::Kind::failedConnection, AddressFamily::ipv4, 0};
        if (!IN6_IS_ADDR_UNSPECIFIED(&destination))
            return UnusedSocket{UnusedSocket::Kind::failedConnection, family, 0};
        return UnusedSocket{UnusedSocket::Kind::unbound, family, 0};
    }
    const bool isProbe =
        family == AddressFamily::ipv6 && port >= kFirstPortOfKernelsChoice &&
        std::memcmp(&message.id.idiag_src, &in6addr_loopback, sizeof in6addr_loopback) == 0;
    return UnusedSocket{isProbe ? UnusedSocket::Kind::addressProbe : UnusedSocket::Kind::bound,
                        family, port};
}

UnusedSocketWatch::UnusedSocketWatch() : socket_(watchSocket()) {}

void UnusedSocketWatch::read(const std::function<void(UnusedSocket)>& call) {
    std::array<std::byte, 1024> buffer;
    for (int count = 0; count < kMostEndsAtOnce; ++count) {
        sockaddr_nl sender{};
        socklen_t senderLength = sizeof sender;
        const ssize_t length = ::recvfrom(socket_.get(), buffer.data(), buffer.size(), 0,
                                          reinterpret_cast<sockaddr*>(&sender), &senderLength);
        // Lost messages are lost; what follows is as good as what came before.
        if (length < 0 && (errno == EINTR || errno == ENOBUFS))
            continue;
        if (length <= 0)
            return;
        if (sender.nl_pid != 0)
            continue;
        if (const auto socket =
                decodeUnusedSocket(std::span(buffer).first(static_cast<std::size_t>(length))))
            call(*socket);
    }
}

} // namespace zenlot
