#include "inventory/darwin/darwin_process_tables.h"
#include "inventory/darwin/fake_darwin_calls.h"
#include "inventory/darwin/kernel_bytes.h"
#include "inventory/port_scanner.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <string>

namespace zenlot {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr UserId kCurrentUser = 777;

template <typename Sockets>
std::vector<std::uint16_t> localPortsOf(const Sockets& sockets) {
    std::vector<std::uint16_t> ports(sockets.size());
    std::ranges::transform(sockets, ports.begin(),
                           [](const auto& socket) { return socket.localPort; });
    return ports;
}

class DarwinProcessTablesTest : public testing::Test {
  protected:
    std::unique_ptr<ProcessSnapshot>
    snapshot(std::optional<std::int64_t> port = std::nullopt) const {
        return tables_.beginSnapshot(port);
    }

    std::vector<std::uint16_t> tablePorts(std::optional<std::int64_t> port = std::nullopt) const {
        return localPortsOf(snapshot(port)->tcpTable());
    }

    std::vector<std::uint16_t> socketPorts(ProcessId pid,
                                           std::optional<std::int64_t> port = std::nullopt) const {
        std::vector<TcpSocket> sockets;
        snapshot(port)->appendTcpSockets(pid, sockets);
        return localPortsOf(sockets);
    }

    // Gives the process a descriptor, numbered from 0, for each of the sockets.
    void addProcess(ProcessId pid, const std::vector<Socket>& sockets, std::string path = {}) {
        FakeDarwinProcess& process = calls_.processes[pid];
        for (const Socket& socket : sockets) {
            const int number = static_cast<int>(process.sockets.size());
            process.descriptors = joined({process.descriptors, descriptor(number)});
            process.sockets[number] = socketInfo(socket);
        }
        process.bsdInfo = bsdInfo(1000, 2000);
        process.path = std::move(path);
        calls_.pids.push_back(pid);
    }

    FakeDarwinCalls calls_;
    DarwinProcessTables tables_{calls_, kCurrentUser};
};

TEST_F(DarwinProcessTablesTest, TcpTableNeedsBothCalls) {
    const Bytes entries = joined({tableEntry({.localPort = 1}), tableEntry({.localPort = 2})});
    FakeDarwinTable& table = calls_.tcpPcbList;
    const FakeDarwinTable good{.contents = joined({tableHead(), entries, tableHead()})};

    table = good;
    EXPECT_THAT(tablePorts(), ElementsAre(1, 2));
    table.sizeFails = true;
    EXPECT_THAT(tablePorts(), IsEmpty());
    table = good;
    table.readFails = true;
    EXPECT_THAT(tablePorts(), IsEmpty());
    table = good;
    table.announcedSize = good.contents.size() - 1; // has grown since
    EXPECT_THAT(tablePorts(), IsEmpty());
    table = good;
    table.announcedSize = 100000; // has shrunk since
    EXPECT_THAT(tablePorts(), ElementsAre(1, 2));
    // The second size counts, but never beyond the buffer.
    table.claimedSize = 24 + 408;
    EXPECT_THAT(tablePorts(), ElementsAre(1));
    table = good;
    table.claimedSize = SIZE_MAX;
    EXPECT_THAT(tablePorts(), ElementsAre(1, 2));

    // The smallest table with an entry in it.
    table = {.contents = joined({tableHead(4), tableEntry({.localPort = 3, .length = 25})})};
    EXPECT_THAT(tablePorts(), ElementsAre(3));
}

TEST_F(DarwinProcessTablesTest, ASnapshotForOnePortHoldsThatPortOnly) {
    calls_.tcpPcbList.contents =
        joined({tableHead(), tableEntry({.localPort = 80}), tableEntry({.localPort = 0}),
                tableEntry({.localPort = 81}), tableHead()});
    addProcess(5, {{.localPort = 80}, {.localPort = 0}, {.localPort = 81}});
    EXPECT_THAT(tablePorts(81), ElementsAre(81));
    EXPECT_THAT(socketPorts(5, 81), ElementsAre(81));
    for (const std::int64_t port :
         {std::int64_t{-1}, std::int64_t{0}, std::int64_t{65536 + 80}, std::int64_t{INT64_MAX}}) {
        EXPECT_THAT(tablePorts(port), IsEmpty()) << port;
        EXPECT_THAT(socketPorts(5, port), IsEmpty()) << port;
    }
}

TEST_F(DarwinProcessTablesTest, PidListIsBoundedByItsBuffer) {
    calls_.pids.resize(8200);
    std::iota(calls_.pids.begin(), calls_.pids.end(), 0);
    const std::vector<ProcessId> first(calls_.pids.begin(), calls_.pids.begin() + 8192);
    EXPECT_EQ(snapshot()->pids(), first);
    calls_.claimedPids = 1000000; // how many there are, not how many were written
    EXPECT_EQ(snapshot()->pids(), first);
    calls_.claimedPids = 3;
    EXPECT_THAT(snapshot()->pids(), ElementsAre(0, 1, 2));
}

TEST_F(DarwinProcessTablesTest, PidsComeFromTheProcessTableWhenTheListFails) {
    FakeDarwinTable& table = calls_.allProcesses;
    const FakeDarwinTable good{
        .contents = joined({processRecord(0), processRecord(50), processRecord(40)})};
    for (const int result : {0, -1}) {
        calls_.claimedPids = result;
        table = good;
        EXPECT_THAT(snapshot()->pids(), ElementsAre(0, 50, 40));
        table.announcedSize = 4 * 648 + 647;
        EXPECT_THAT(snapshot()->pids(), ElementsAre(0, 50, 40));
        table.claimedSize = 2 * 648 - 1;
        EXPECT_THAT(snapshot()->pids(), ElementsAre(0));
        table = good;
        table.claimedSize = 100 * 648;
        EXPECT_THAT(snapshot()->pids(), ElementsAre(0, 50, 40));
        table = good;
        table.sizeFails = true;
        EXPECT_THAT(snapshot()->pids(), IsEmpty());
        table = good;
        table.readFails = true;
        EXPECT_THAT(snapshot()->pids(), IsEmpty());
        table = {.contents = Bytes(647)};
        EXPECT_THAT(snapshot()->pids(), IsEmpty());
    }
    calls_.claimedPids.reset();
    calls_.pids = {7};
    table = good;
    EXPECT_THAT(snapshot()->pids(), ElementsAre(7));
}

TEST_F(DarwinProcessTablesTest, DescriptorListIsReadInTwoCalls) {
    struct Case {
        std::optional<int> announced;
        std::optional<int> claimed;
        std::size_t sockets;
    };
    for (const Case& expected : {
             Case{{}, {}, 3},       // as the kernel has it
             Case{-1, {}, 0},       // refused
             Case{0, {}, 0},        //
             Case{7, {}, 0},        // no room for a record
             Case{7, 24, 0},        // and none written, whatever is claimed
             Case{8, {}, 1},        //
             Case{23, {}, 2},       // room for whole records only
             Case{4096, {}, 3},     // descriptors were closed in between
             Case{{}, -1, 0},       // the process has ended in between
             Case{{}, 7, 0},        //
             Case{{}, 8, 1},        //
             Case{{}, 15, 1},       //
             Case{{}, 1000000, 3},  // more than there is room for
             Case{16, INT32_MAX, 2} //
         }) {
        SCOPED_TRACE(std::to_string(expected.announced.value_or(-99)) + " " +
                     std::to_string(expected.claimed.value_or(-99)));
        calls_.processes.clear();
        addProcess(5, {{.localPort = 1}, {.localPort = 2}, {.localPort = 3}});
        calls_.processes[5].announcedDescriptors = expected.announced;
        calls_.processes[5].claimedDescriptors = expected.claimed;
        EXPECT_THAT(socketPorts(5), SizeIs(expected.sockets));
    }
    EXPECT_THAT(socketPorts(6), IsEmpty());
}

TEST_F(DarwinProcessTablesTest, SocketsOfAProcessAreTcpSocketsInDescriptorOrder) {
    addProcess(5, {{.localPort = 9, .state = 4, .foreignPort = 443},
                   {.localPort = 8, .family = 30},
                   {.localPort = 7, .kind = 1},
                   {.localPort = 6},
                   {.localPort = 5},
                   {.localPort = 0, .state = 0}});
    FakeDarwinProcess& process = calls_.processes[5];
    process.sockets[3].resize(791);                                      // cut short
    put(process.descriptors, 4 * 8 + 4, std::uint32_t{1});               // a file
    process.descriptors = joined({process.descriptors, descriptor(77)}); // closed in between

    std::vector<TcpSocket> sockets;
    snapshot()->appendTcpSockets(5, sockets);
    EXPECT_THAT(sockets, ElementsAre(TcpSocket{AddressFamily::ipv4, TcpState::established, 9, 443},
                                     TcpSocket{AddressFamily::ipv6, TcpState::listen, 8, 0},
                                     TcpSocket{AddressFamily::ipv4, TcpState::closed, 0, 0}));
}

TEST_F(DarwinProcessTablesTest, IdentityOfAProcess) {
    addProcess(5, {}, "/opt/n\xff/node");
    EXPECT_EQ(snapshot()->realUid(5), 2000U);
    EXPECT_EQ(snapshot()->executablePath(5), "/opt/n\uFFFD/node");
    calls_.processes[5].bsdInfo.reset();
    EXPECT_EQ(snapshot()->realUid(5), std::nullopt);
    calls_.processes[5].path = std::string("/bin/sh\0/other", 14);
    EXPECT_EQ(snapshot()->executablePath(5), "/bin/sh");
    calls_.processes[5].path.assign(5000, 'a'); // no zero byte within the buffer
    EXPECT_EQ(snapshot()->executablePath(5), std::string(4096, 'a'));
    calls_.processes[5].path.clear();
    EXPECT_EQ(snapshot()->executablePath(5), "");
    EXPECT_EQ(snapshot()->realUid(6), std::nullopt);
    EXPECT_EQ(snapshot()->executablePath(6), "");
}

// The whole way from kernel bytes to records.
TEST_F(DarwinProcessTablesTest, AScanOverTheTables) {
    calls_.tcpPcbList.contents = joined(
        {tableHead(), tableEntry({.localPort = 3000, .family = 2}), tableEntry({.localPort = 3000}),
         tableEntry({.localPort = 22, .length = 200, .uid = 0}),
         tableEntry({.localPort = 80, .uid = 0}),
         tableEntry({.localPort = 5555, .foreignPort = 443}), tableHead()});
    addProcess(1, {{.localPort = 80}}, "/sbin/launchd");
    addProcess(30, {{.localPort = 3000, .family = 30}, {.localPort = 3000}}, "/usr/bin/node");
    addProcess(31, {{.localPort = 3000, .family = 30}, {.localPort = 5555, .state = 4}},
               "/usr/bin/worker");
    addProcess(20, {{.localPort = 9000}});
    calls_.processes[20].bsdInfo.reset();

    const auto nothingInUse = [](std::uint16_t, AddressFamily) { return false; };
    EXPECT_THAT(
        PortScanner(tables_, nothingInUse).listOccupiedPorts(),
        ElementsAre(OccupiedPort{22, "TCP6", "", "", 0, "777", ""},
                    OccupiedPort{80, "TCP6", "", "", 0, "0", ""},
                    OccupiedPort{3000, "TCP6", "worker", "Worker", 31, "2000", "/usr/bin/worker"},
                    OccupiedPort{9000, "TCP4", "", "", 20, "0", ""}));
}

} // namespace
} // namespace zenlot
