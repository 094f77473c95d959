#include "inventory/darwin/kernel_bytes.h"
#include "inventory/darwin/process_records.h"
#include "inventory/darwin/tcp_pcb_list.h"

#include <gmock/gmock.h>

#include <random>

namespace zenlot {
namespace {

using namespace test;
using testing::Optional;
using testing::SizeIs;

using NoEntries = std::vector<TcpTableEntry>;

TEST(TcpPcbListTest, AnImpossibleLengthEndsTheTable) {
    const Bytes first = joined({tableHead(), tableEntry({})});
    const Bytes whole = joined({first, tableEntry({})});
    EXPECT_THAT(decodeTcpPcbList(whole, 0), Optional(SizeIs(2)));
    for (std::size_t size = first.size(); size < whole.size(); ++size)
        EXPECT_THAT(decodeTcpPcbList(std::span(whole).first(size), 0), Optional(SizeIs(1))) << size;
    for (const std::uint32_t length : {0U, 24U, 8192U, 0xffffffffU}) {
        const Bytes table = joined({first, record(9000, {{0, length}})});
        EXPECT_THAT(decodeTcpPcbList(table, 0), Optional(SizeIs(1))) << length;
    }
    for (const std::uint32_t length : {0U, 3U, 24U, 0xffffffffU})
        EXPECT_EQ(decodeTcpPcbList(record(24, {{0, length}}), 0), std::nullopt) << length;
    EXPECT_EQ(decodeTcpPcbList(std::span(whole).first(3), 0), std::nullopt);
}

// Most of what this looks for only a sanitizer can see.
TEST(KernelDecodersTest, StayWithinDamagedBytes) {
    std::mt19937 random{20240229}; // always the same, so that a failure can be repeated
    const auto damaged = [&random](Bytes bytes) {
        for (auto count = random() % 8; count > 0; --count)
            bytes[random() % bytes.size()] = static_cast<std::byte>(random() % 32);
        const auto size = random() % (bytes.size() + 1);
        return Bytes(bytes.data(), bytes.data() + size); // in no more memory than it needs
    };
    for (int round = 0; round < 6000; ++round) {
        const Bytes table = damaged(joined({tableHead(), tableEntry({}), tableEntry({.length = 30}),
                                            tableEntry({.length = 190}), tableHead()}));
        EXPECT_LE(decodeTcpPcbList(table, 0).value_or(NoEntries()).size(), table.size() / 25);
        EXPECT_LE(decodeSocketDescriptors(table).size(), table.size() / 8);
        EXPECT_THAT(decodeProcessIds(table), SizeIs(table.size() / 648));
        EXPECT_EQ(decodeProcessOwner(table).has_value(), table.size() >= 136);
        EXPECT_EQ(decodeTaskInfo(table).has_value(), table.size() >= 232);
    }
}

} // namespace
} // namespace zenlot
