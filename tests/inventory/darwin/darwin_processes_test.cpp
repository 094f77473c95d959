#include "inventory/darwin/darwin_process_pinner.h"
#include "inventory/darwin/darwin_process_tables.h"
#include "inventory/darwin/fake_darwin_calls.h"
#include "inventory/darwin/kernel_bytes.h"
#include "inventory/port_scanner.h"

#include <gmock/gmock.h>

namespace zenlot {
namespace {

using namespace test;
using testing::ElementsAre;
using testing::SizeIs;

constexpr UserId kCurrentUser = 777;

class DarwinProcessesTest : public testing::Test {
  protected:
    auto snapshot() const { return tables.beginSnapshot(port); }
    std::vector<TcpSocket> socketsOf(ProcessId pid) const {
        std::vector<TcpSocket> sockets;
        snapshot()->appendTcpSockets(pid, sockets);
        return sockets;
    }
    FakeDarwinProcess& addProcess(ProcessId pid, std::uint32_t effectiveUid,
                                  const std::vector<Socket>& sockets, std::string path = {}) {
        FakeDarwinProcess& process = calls.processes[pid];
        for (std::uint32_t number = 0; number < sockets.size(); ++number) {
            process.descriptors = joined({process.descriptors, descriptor(number)});
            process.sockets[static_cast<int>(number)] = socketInfo(sockets[number]);
        }
        process.bsdInfo =
            record(136, {{20, effectiveUid}, {28, 2000}, {120, 17}, {124, 0}, {128, 5}, {132, 0}});
        process.path = std::move(path);
        calls.pids.push_back(pid);
        return process;
    }

    FakeDarwinCalls calls;
    const DarwinProcessTables tables{calls, kCurrentUser};
    std::optional<std::int64_t> port;
};

// The whole way from kernel bytes to records.
TEST_F(DarwinProcessesTest, AScanOverTheTables) {
    calls.tcpPcbList.contents =
        joined({tableHead(29), tableEntry({.localPort = 3000, .length = 259, .family = 2}),
                tableEntry({.localPort = 22, .length = 200}), tableEntry({}), tableHead(),
                tableEntry({.localPort = 80})});
    FakeDarwinProcess& node = addProcess(30, 0, {{3000}, {3001}, {3002}, {3003, 2, 4}, {}},
                                         std::string("/n\xff/node\0/x", 11));
    node.sockets[1].resize(791);
    node.descriptors = joined({descriptor(77), descriptor(2, 1), descriptor(1), descriptor(0),
                               descriptor(3), descriptor(4)});
    addProcess(20, 0, {{.localPort = 9000, .family = 30}}).bsdInfo.reset();
    const auto nothingInUse = [](std::uint16_t, AddressFamily) { return false; };
    EXPECT_THAT(PortScanner(tables, nothingInUse).listOccupiedPorts(),
                ElementsAre(OccupiedPort{22, "TCP6", "", "", 0, "777", ""},
                            OccupiedPort{3000, "TCP4", "node", "Node", 30, "2000", "/n\uFFFD/node",
                                         17'000'005},
                            OccupiedPort{9000, "TCP6", "", "", 20, "0", ""}));
    for (const std::int64_t asked : {3000, 65536 + 3000, 0}) {
        port = asked;
        EXPECT_THAT(snapshot()->tcpTable(), SizeIs(asked == 3000 ? 1 : 0)) << asked;
        EXPECT_THAT(snapshot()->silentFamilies(), SizeIs(0)) << asked;
        EXPECT_THAT(socketsOf(30), SizeIs(asked == 3000 ? 1 : 0)) << asked;
    }
    node.path.assign(5000, 'a'); // no zero byte within the buffer
    EXPECT_EQ(snapshot()->executablePath(30), std::string(4096, 'a'));
}

TEST_F(DarwinProcessesTest, OnlyAProcessWhoseEffectiveUserIsTheCurrentOneIsKilled) {
    for (const int pid : {10, 0, -10}) // the others are process groups
        addProcess(pid, kCurrentUser, {});
    addProcess(11, 0, {});
    addProcess(12, kCurrentUser, {}).bsdInfo.reset();
    const DarwinProcessPinner pinner(calls);
    for (const int pid : {0, -10, 11, 12, 13}) {
        EXPECT_EQ(pinner.pin(pid) != nullptr, pid == 11) << pid;
        EXPECT_FALSE(forceQuitProcess(pinner, {{pid, 17'000'005}}, kCurrentUser)) << pid;
    }
    EXPECT_FALSE(forceQuitProcess(pinner, {{10, 1}}, kCurrentUser));
    const ProcessSighting seen = lookAtProcess(pinner, {{10}}, kCurrentUser);
    EXPECT_TRUE(forceQuitProcess(pinner, {seen.process}, kCurrentUser));
    EXPECT_THAT(calls.signals, ElementsAre(std::pair(10, 9)));
}

} // namespace
} // namespace zenlot
