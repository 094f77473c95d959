// Feeds damaged records to the decoders. Most of what it looks for only a sanitizer can see; that
// no decoder makes more of the bytes than they can hold is checked in every build.
#include "inventory/darwin/darwin_process_tables.h"
#include "inventory/darwin/fake_darwin_calls.h"
#include "inventory/darwin/kernel_bytes.h"
#include "inventory/darwin/process_records.h"
#include "inventory/darwin/tcp_pcb_list.h"

#include <gtest/gtest.h>

#include <random>

namespace zenlot {
namespace {

using namespace test;

constexpr int kRounds = 6000;

class Damage {
  public:
    // A copy with some bytes, mostly small or extreme numbers, put somewhere, and often cut short
    // or with something behind it. It has exactly the memory that it needs, so that a sanitizer
    // sees each byte read too far.
    Bytes apply(const Bytes& original) {
        Bytes bytes = original;
        for (std::uint32_t count = below(8); count > 0 && !bytes.empty(); --count) {
            constexpr std::uint8_t kNasty[]{0, 1, 3, 4, 24, 25, 0x1f, 0x20, 0x7f, 0x80, 0xff};
            const auto value = below(2) == 0 ? kNasty[below(std::size(kNasty))] : below(256);
            bytes[below(bytes.size())] = static_cast<std::byte>(value);
        }
        switch (below(3)) {
        case 0:
            bytes.resize(below(bytes.size() + 1));
            break;
        case 1:
            bytes.resize(bytes.size() + below(40), std::byte{0xff});
            break;
        default:
            break;
        }
        bytes.shrink_to_fit();
        return bytes;
    }

    std::uint32_t below(std::size_t bound) { return static_cast<std::uint32_t>(random_() % bound); }

    std::optional<int> maybeNumber() {
        if (below(2) == 0)
            return std::nullopt;
        return below(10) == 0 ? INT32_MAX : static_cast<int>(below(200)) - 10;
    }

  private:
    std::mt19937 random_{20240229}; // always the same, so that a failure can be repeated
};

TEST(MutationTest, DecodersStayWithinTheBytesTheyGet) {
    const Bytes table = joined({tableHead(), tableEntry({.localPort = 1}),
                                tableEntry({.localPort = 2, .length = 30}),
                                tableEntry({.localPort = 3, .length = 190}), tableHead()});
    const Bytes descriptors = joined({descriptor(1), descriptor(2, 1), descriptor(3)});
    const Bytes socket = socketInfo({.localPort = 80});
    const Bytes processes = joined({processRecord(1), processRecord(2)});
    Damage damage;
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        const Bytes damagedTable = damage.apply(table);
        EXPECT_LE(decodeTcpPcbList(damagedTable, 0).size(), damagedTable.size() / 25);
        const Bytes damagedDescriptors = damage.apply(descriptors);
        EXPECT_LE(decodeSocketDescriptors(damagedDescriptors).size(),
                  damagedDescriptors.size() / 8);
        const Bytes damagedSocket = damage.apply(socket);
        EXPECT_LE(decodeTcpSocket(damagedSocket).has_value(), damagedSocket.size() == 792);
        const Bytes damagedProcesses = damage.apply(processes);
        EXPECT_EQ(decodeProcessIds(damagedProcesses).size(), damagedProcesses.size() / 648);
    }
}

TEST(MutationTest, SnapshotsSurviveWrongSizes) {
    Damage damage;
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        FakeDarwinCalls calls;
        calls.tcpPcbList.contents =
            damage.apply(joined({tableHead(), tableEntry({}), tableHead()}));
        calls.tcpPcbList.announcedSize = damage.below(600);
        calls.allProcesses.contents = damage.apply(processRecord(5));
        calls.allProcesses.announcedSize = damage.below(2000);
        if (damage.below(2) == 0)
            calls.tcpPcbList.claimedSize = calls.allProcesses.claimedSize = damage.below(5000);
        calls.claimedPids = damage.maybeNumber();
        FakeDarwinProcess& process = calls.processes[5];
        process.descriptors = damage.apply(joined({descriptor(0), descriptor(1)}));
        process.announcedDescriptors = static_cast<int>(damage.below(50)) - 5;
        process.claimedDescriptors = damage.maybeNumber();
        process.sockets[0] = damage.apply(socketInfo({.localPort = 80}));

        const DarwinProcessTables tables(calls, 0);
        const auto snapshot = tables.beginSnapshot(std::nullopt);
        EXPECT_LE(snapshot->tcpTable().size(), 600U / 25);
        EXPECT_LE(snapshot->pids().size(), 8192U);
        std::vector<TcpSocket> sockets;
        snapshot->appendTcpSockets(5, sockets);
        EXPECT_LE(sockets.size(), 50U / 8);
    }
}

} // namespace
} // namespace zenlot
