#include "inventory/darwin/kernel_bytes.h"
#include "inventory/darwin/tcp_pcb_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace zenlot {
namespace {

using namespace test;
using testing::ElementsAre;

constexpr UserId kCurrentUser = 777;
constexpr auto kIpv4 = AddressFamily::ipv4;
constexpr auto kIpv6 = AddressFamily::ipv6;

std::vector<std::uint16_t> portsOf(const Bytes& table) {
    std::vector<std::uint16_t> ports;
    for (const TcpTableEntry& entry : decodeTcpPcbList(table, kCurrentUser))
        ports.push_back(entry.localPort);
    return ports;
}

TEST(TcpPcbListTest, ReadsEntriesInTableOrderUpToTheTrailingHead) {
    const Bytes table =
        joined({tableHead(), tableEntry({.localPort = 0xbeef, .foreignPort = 0x1234}),
                tableEntry({.localPort = 80, .family = 2, .uid = 4294967294U}),
                tableEntry({.localPort = 80}), tableHead()});
    EXPECT_THAT(decodeTcpPcbList(table, kCurrentUser),
                ElementsAre(TcpTableEntry{0xbeef, 0x1234, kIpv6, 502},
                            TcpTableEntry{80, 0, kIpv4, 4294967294U},
                            TcpTableEntry{80, 0, kIpv6, 502}));
}

TEST(TcpPcbListTest, EntryLengthDecidesWhichFieldsAreRead) {
    struct Case {
        std::uint32_t length;
        AddressFamily family;
        UserId uid;
    };
    for (const Case& expected : {
             Case{25, kIpv4, kCurrentUser},
             Case{184, kIpv4, kCurrentUser},
             Case{185, kIpv6, kCurrentUser},
             Case{200, kIpv6, kCurrentUser},
             Case{256, kIpv6, kCurrentUser},
             Case{257, kIpv6, 502},
             Case{8191, kIpv6, 502},
         }) {
        SCOPED_TRACE(expected.length);
        const Bytes table =
            joined({tableHead(), tableEntry({.localPort = 443, .length = expected.length})});
        EXPECT_THAT(decodeTcpPcbList(table, kCurrentUser),
                    ElementsAre(TcpTableEntry{443, 0, expected.family, expected.uid}));
    }
}

TEST(TcpPcbListTest, UnalignedLengthsDoNotDisturbWhatFollows) {
    EXPECT_THAT(portsOf(joined({tableHead(29), tableEntry({.localPort = 1, .length = 259}),
                                tableEntry({.localPort = 2, .length = 187}),
                                tableEntry({.localPort = 3, .length = 30}), tableHead()})),
                ElementsAre(1, 2, 3));
}

TEST(TcpPcbListTest, AnImpossibleEntryLengthEndsTheTable) {
    const Bytes good = joined({tableHead(), tableEntry({.localPort = 1})});
    const Bytes later = tableEntry({.localPort = 2});
    for (const std::uint32_t length : {0U, 1U, 24U, 8192U, 0x80000000U, 0xffffffffU}) {
        SCOPED_TRACE(length);
        Bytes bad(9000);
        put(bad, 0, length);
        EXPECT_THAT(portsOf(joined({good, bad, later})), ElementsAre(1));
    }

    // Cut anywhere, the second entry runs past the table; whole, it is read without anything
    // behind it.
    const Bytes whole = joined({good, later});
    for (std::size_t size = good.size(); size < whole.size(); ++size) {
        SCOPED_TRACE(size);
        EXPECT_THAT(portsOf({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)}),
                    ElementsAre(1));
    }
    EXPECT_THAT(portsOf(whole), ElementsAre(1, 2));
}

TEST(TcpPcbListTest, TheHeadSaysWhereTheFirstEntryStarts) {
    const Bytes entry = tableEntry({.localPort = 1});
    for (const std::uint32_t length : {4U, 5U, 24U, 100U}) {
        SCOPED_TRACE(length);
        EXPECT_THAT(portsOf(joined({tableHead(length), entry})), ElementsAre(1));
    }
    for (const std::uint32_t length : {0U, 3U, 24U + 408U, 0xffffffffU}) {
        SCOPED_TRACE(length);
        Bytes table = joined({tableHead(), entry});
        put(table, 0, length);
        table[4] = std::byte{1}; // what starts at 3 would be an entry of 256 bytes
        putPort(table, 3 + 22, 1);
        EXPECT_THAT(portsOf(table), ElementsAre());
    }
    for (std::size_t size = 0; size < 4; ++size)
        EXPECT_THAT(portsOf(Bytes(size, std::byte{1})), ElementsAre());
}

} // namespace
} // namespace zenlot
