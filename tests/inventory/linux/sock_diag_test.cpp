#include "inventory/linux/sock_diag.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/tcp.h>

#include <algorithm>
#include <cstring>
#include <random>

namespace zenlot {
namespace {

using Datagram = std::vector<std::byte>;
using Dump = std::vector<Datagram>;

// One message as the kernel sends it.
Datagram message(std::uint16_t port, std::uint16_t type = SOCK_DIAG_BY_FAMILY,
                 std::uint16_t flags = 0) {
    struct {
        nlmsghdr header;
        inet_diag_msg body;
    } content{};
    content.header.nlmsg_len = sizeof content;
    content.header.nlmsg_type = type;
    content.header.nlmsg_flags = flags;
    content.body.idiag_family = AF_INET6;
    content.body.idiag_state = TCP_LISTEN;
    content.body.id.idiag_sport = htons(port);
    content.body.idiag_inode = 31337;
    content.body.idiag_uid = 1000;
    Datagram datagram(sizeof content);
    std::memcpy(datagram.data(), &content, sizeof content);
    return datagram;
}

Datagram operator+(Datagram left, const Datagram& right) {
    left.insert(left.end(), right.begin(), right.end());
    return left;
}

const Datagram kEnd = message(0, NLMSG_DONE);

// Answers each dump with the next of its scripts; the last one serves for ever.
class ScriptedTransport final : public NetlinkTransport {
  public:
    bool dump(std::span<const std::byte>, const Consumer& consume) override {
        const Dump& script = dumps.at(std::min(requests++, dumps.size() - 1));
        return !std::ranges::all_of(script, consume);
    }

    std::vector<Dump> dumps;
    std::size_t requests = 0;
};

TEST(SockDiagTest, MakesAnInterruptedDumpAgain) {
    ScriptedTransport transport;
    const auto dump = [&] {
        return dumpTcpSockets(transport, AddressFamily::ipv6, SocketScope::listening, {});
    };
    const Dump interrupted{message(80, SOCK_DIAG_BY_FAMILY, NLM_F_DUMP_INTR), kEnd};
    transport.dumps = {interrupted,
                       {message(80), message(0, NLMSG_DONE, NLM_F_DUMP_INTR)},
                       {message(80) + message(81), message(82) + kEnd}};
    const auto found = dump();
    ASSERT_EQ(found.value().size(), 3U);
    const TcpSocket last{AddressFamily::ipv6, TcpState::listen, 82, 0};
    EXPECT_EQ(found->at(2), (KernelTcpSocket{last, 1000, 31337}));
    transport.dumps = {interrupted};
    EXPECT_EQ(dump().value().size(), 1U); // what never rests is taken as it is
    EXPECT_EQ(transport.requests, 3U + 4U);
    transport.dumps = {{message(0, NLMSG_ERROR), kEnd}};
    EXPECT_FALSE(dump());
    transport.dumps = {{message(80)}}; // falls silent
    EXPECT_FALSE(dump());
}

TEST(SockDiagTest, BrokenDatagramsAreRefusedWithoutReadingPastTheirEnd) {
    const Datagram whole = message(80) + message(81) + kEnd;
    std::mt19937 random(1); // NOLINT: the same damage in every run
    for (int round = 0; round < 5000; ++round) {
        Datagram broken(whole.data(), whole.data() + 1 + random() % whole.size());
        for (auto changes = random() % 4; changes > 0; --changes)
            broken[random() % broken.size()] = static_cast<std::byte>(random());
        std::vector<KernelTcpSocket> found;
        bool wasInterrupted = false;
        decodeSockDiag(broken, wasInterrupted, found);
        EXPECT_LE(found.size(), broken.size() / kEnd.size());
    }
}

} // namespace
} // namespace zenlot
