#include "inventory/linux/netlink_messages.h"
#include "inventory/linux/sock_diag.h"

#include <gtest/gtest.h>

#include <random>

namespace zenlot {
namespace {

using Dump = std::vector<Datagram>;

// Answers each dump with the next of its scripts; the last one serves for ever.
class ScriptedTransport final : public NetlinkTransport {
  public:
    explicit ScriptedTransport(std::vector<Dump> dumps) : dumps_(std::move(dumps)) {}

    bool dump(std::span<const std::byte>, const Consumer& consume) override {
        const Dump& script = dumps_[std::min(requests++, dumps_.size() - 1)];
        for (const Datagram& datagram : script) {
            if (!consume(datagram))
                return true;
        }
        return false;
    }

    std::size_t requests = 0;

  private:
    std::vector<Dump> dumps_;
};

Datagram sockets(std::initializer_list<std::uint16_t> ports, std::uint16_t flags = NLM_F_MULTI) {
    Datagram datagram;
    for (const std::uint16_t port : ports)
        appendSocket(datagram, AF_INET, port, port + 1000U, 7, flags);
    return datagram;
}

Datagram end(std::uint16_t type = NLMSG_DONE, std::uint16_t flags = NLM_F_MULTI) {
    Datagram datagram;
    appendEnd(datagram, type, flags);
    return datagram;
}

std::optional<std::vector<KernelTcpSocket>> dumpFrom(NetlinkTransport& transport) {
    return dumpListeningSockets(transport, AddressFamily::ipv4, std::nullopt);
}

TEST(SockDiagTest, ReadsADumpOfSeveralDatagrams) {
    Datagram second;
    appendSocket(second, AF_INET6, 443, 77, 0);
    appendEnd(second);
    ScriptedTransport transport({{sockets({80, 81}), second}});
    const auto found = dumpFrom(transport);
    ASSERT_TRUE(found);
    const TcpSocket ipv6{AddressFamily::ipv6, TcpState::listen, 443, 0};
    ASSERT_EQ(found->size(), 3U);
    EXPECT_EQ(found->at(0).socket.localPort, 80);
    EXPECT_EQ(found->at(0).inode, 1080U);
    EXPECT_EQ(found->at(0).ownerUid, 7U);
    EXPECT_EQ(found->at(2), (KernelTcpSocket{ipv6, 0, 77}));
}

TEST(SockDiagTest, MakesAnInterruptedDumpAgain) {
    const Dump interrupted{sockets({80}, NLM_F_MULTI | NLM_F_DUMP_INTR), end()};
    const Dump interruptedAtTheEnd{sockets({80}), end(NLMSG_DONE, NLM_F_DUMP_INTR)};
    const Dump whole{sockets({80, 81}), end()};
    ScriptedTransport recovers({interrupted, interruptedAtTheEnd, whole});
    EXPECT_EQ(dumpFrom(recovers).value().size(), 2U);
    EXPECT_EQ(recovers.requests, 3U);

    ScriptedTransport restless({interrupted});
    EXPECT_EQ(dumpFrom(restless).value().size(), 1U);
    EXPECT_EQ(restless.requests, 4U);
}

TEST(SockDiagTest, RefusalAndSilenceGiveNothing) {
    ScriptedTransport refuses({{end(NLMSG_ERROR)}});
    EXPECT_FALSE(dumpFrom(refuses));
    ScriptedTransport fallsSilent({{sockets({80})}});
    EXPECT_FALSE(dumpFrom(fallsSilent));
}

TEST(SockDiagTest, BrokenDatagramsAreRefusedWithoutReadingPastTheirEnd) {
    Datagram whole = sockets({80, 81});
    appendEnd(whole);
    for (std::size_t length = 0; length < whole.size(); ++length) {
        std::vector<KernelTcpSocket> found;
        bool wasInterrupted = false;
        const Datagram cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
        EXPECT_NE(decodeSockDiag(cut, wasInterrupted, found), DumpProgress::done) << length;
    }
    std::mt19937 random(1);
    for (int round = 0; round < 5000; ++round) {
        Datagram mutated = whole;
        for (int flips = 1 + static_cast<int>(random() % 4); flips > 0; --flips)
            mutated[random() % mutated.size()] = static_cast<std::byte>(random());
        std::vector<KernelTcpSocket> found;
        bool wasInterrupted = false;
        decodeSockDiag(mutated, wasInterrupted, found);
        EXPECT_LE(found.size(), 3U);
    }
}

} // namespace
} // namespace zenlot
