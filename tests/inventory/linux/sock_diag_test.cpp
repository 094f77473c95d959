#include "inventory/linux/sock_diag.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/tcp.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace zenlot {
namespace {

using Datagram = std::vector<std::byte>;
using Dump = std::vector<Datagram>;

Datagram bytesOf(const auto& content) {
    Datagram datagram(sizeof content);
    std::memcpy(datagram.data(), &content, sizeof content);
    return datagram;
}

// One socket as the kernel sends it.
Datagram message(std::uint16_t port, std::uint16_t flags = 0) {
    struct {
        nlmsghdr header;
        inet_diag_msg body;
    } content{};
    content.header.nlmsg_len = sizeof content;
    content.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    content.header.nlmsg_flags = flags;
    content.body.idiag_family = AF_INET6;
    content.body.idiag_state = TCP_LISTEN;
    content.body.id.idiag_sport = htons(port);
    content.body.id.idiag_src[3] = htonl(1);
    content.body.idiag_inode = 31337;
    content.body.idiag_uid = 1000;
    return bytesOf(content);
}

// A message about the dump itself, with a number as its content.
Datagram control(std::uint16_t type, int number = 0, std::uint16_t flags = 0,
                 std::uint32_t length = sizeof(nlmsghdr) + sizeof(int)) {
    struct {
        nlmsghdr header;
        int number;
    } content{};
    content.header.nlmsg_len = length;
    content.header.nlmsg_type = type;
    content.header.nlmsg_flags = flags;
    content.number = number;
    return bytesOf(content);
}

Datagram operator+(Datagram left, const Datagram& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

Datagram firstOf(const Datagram& datagram, std::size_t size) {
    return {datagram.begin(), datagram.begin() + static_cast<std::ptrdiff_t>(size)};
}

const Datagram kEnd = control(NLMSG_DONE);

// Answers each dump with the next of its scripts; the last one serves for ever. A script that ends
// before the dump is a kernel that falls silent.
class ScriptedTransport final : public NetlinkTransport {
  public:
    explicit ScriptedTransport(std::vector<Dump> scripts) : dumps(std::move(scripts)) {}

    bool dump(std::span<const std::byte>, const Consumer& consume) override {
        const Dump& script = dumps.at(std::min(requests++, dumps.size() - 1));
        return !std::ranges::all_of(script, consume);
    }

    std::vector<Dump> dumps;
    std::size_t requests = 0;
};

TEST(SockDiagTest, TakesWholeDumpsOnly) {
    using Found = std::vector<std::uint16_t>;
    using Ports = std::optional<Found>;
    struct Case {
        const char* name;
        std::vector<Dump> dumps;
        Ports ports;
        std::size_t requests{1};
    };
    const Datagram broken = message(80, NLM_F_DUMP_INTR);
    const Dump interrupted{broken, kEnd};
    const Dump atTheEnd{{message(80), control(NLMSG_DONE, 0, NLM_F_DUMP_INTR)}};
    const Dump whole{message(80) + message(81), message(82) + kEnd};
    const std::uint32_t header = sizeof(nlmsghdr);
    const Case cases[] = {
        {"several datagrams", {whole}, Found{80, 81, 82}},
        {"nothing listens", {{kEnd}}, Found{}},
        {"an end without a number",
         {{firstOf(control(NLMSG_DONE, 0, 0, header), header)}},
         Found{}},
        {"a message of another kind",
         {{control(NLMSG_NOOP) + control(999) + message(80) + kEnd}},
         Found{80}},
        {"nothing after the end counts", {{message(80) + kEnd + message(81)}}, Found{80}},
        {"interrupted twice", {interrupted, atTheEnd, whole}, Found{80, 81, 82}, 3},
        {"interrupted for ever", {interrupted}, Found{80}, 4},
        {"no such protocol", {{control(NLMSG_DONE, -ENOENT)}}, {}},
        {"broken off", {{message(80) + control(NLMSG_DONE, -ENOMEM)}}, {}},
        {"interrupted, then broken off",
         {interrupted, {broken, control(NLMSG_DONE, -ENOMEM)}, whole},
         {},
         2},
        {"refused", {{control(NLMSG_ERROR, -EPERM), kEnd}}, {}},
        {"lost messages", {{control(NLMSG_OVERRUN), kEnd}}, {}},
        {"falls silent", {{message(80)}}, {}},
        {"a length below that of a header", {{control(NLMSG_NOOP, 0, 0, header - 1) + kEnd}}, {}},
        {"a length beyond the datagram", {{control(NLMSG_DONE, 0, 0, header + 5)}}, {}},
        {"half a header", {{message(80) + firstOf(kEnd, header - 1)}}, {}},
        {"half a socket", {{control(SOCK_DIAG_BY_FAMILY) + kEnd}}, {}},
    };
    const auto portsOf = [](const auto& sockets, auto portOf) -> Ports {
        if (!sockets)
            return std::nullopt;
        Found ports;
        std::ranges::transform(*sockets, std::back_inserter(ports), portOf);
        return ports;
    };
    for (const auto& [name, dumps, ports, requests] : cases) {
        ScriptedTransport forTable(dumps);
        const auto sockets =
            dumpTcpSockets(forTable, AddressFamily::ipv6, SocketScope::listening, {});
        EXPECT_EQ(
            portsOf(sockets, [](const KernelTcpSocket& each) { return each.socket.localPort; }),
            ports)
            << name;
        EXPECT_EQ(forTable.requests, requests) << name;
        ScriptedTransport forAddresses(dumps);
        const auto listening = dumpListeningSockets(forAddresses, AddressFamily::ipv6, {});
        EXPECT_EQ(portsOf(listening, [](const ListeningSocket& each) { return each.port; }), ports)
            << name;
        EXPECT_EQ(forAddresses.requests, requests) << name;
    }
}

TEST(SockDiagTest, DecodesWhatIsKnownOfASocket) {
    ScriptedTransport transport({{message(80) + kEnd}});
    const TcpSocket socket{AddressFamily::ipv6, TcpState::listen, 80, 0};
    EXPECT_EQ(dumpTcpSockets(transport, AddressFamily::ipv6, SocketScope::listening, {}),
              (std::vector{KernelTcpSocket{socket, 1000, 31337}}));
    const ListeningSocket listening{*IpAddress::parse("::1"), false, 80, 1000, 31337, 0};
    EXPECT_EQ(dumpListeningSockets(transport, AddressFamily::ipv6, {}), std::vector{listening});
}

} // namespace
} // namespace zenlot
