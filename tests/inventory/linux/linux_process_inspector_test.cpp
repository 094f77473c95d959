#include "inventory/linux/fake_netlink_transport.h"
#include "inventory/linux/linux_process_inspector.h"
#include "support/connection.h"
#include "support/listener.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <optional>

namespace zenlot {
namespace {

using testing::ElementsAre;

constexpr AddressFamily kIpv4 = AddressFamily::ipv4;

TEST(LinuxProcessInspectorTest, SeesItself) {
    const LinuxProcessInspector inspector;
    const auto before = std::chrono::system_clock::now().time_since_epoch();
    const ProcessFacts facts = inspector.inspect(::getpid());
    ASSERT_TRUE(facts.task);
    EXPECT_EQ(facts.task->parentPid, ::getppid());
    EXPECT_EQ(facts.task->state, ProcessState::runnable);
    EXPECT_GT(facts.task->residentBytes, std::uint64_t{1} << 20);
    EXPECT_GT(facts.task->virtualBytes, facts.task->residentBytes);
    EXPECT_LT(facts.task->residentBytes, inspector.physicalMemoryBytes());
    EXPECT_TRUE(facts.task->cpuTime);
    // The machine's start is told in whole seconds.
    EXPECT_LT(facts.task->startTime, before + std::chrono::seconds(2));
    EXPECT_GT(facts.task->startTime, before - std::chrono::hours(1));
    std::error_code error;
    EXPECT_EQ(facts.parentName,
              std::filesystem::read_symlink("/proc/" + std::to_string(::getppid()) + "/exe", error)
                  .filename());
}

TEST(LinuxProcessInspectorTest, ParentIsCalledAsItCallsItselfWhereItsProgramIsNotToBeSeen) {
    const TemporaryFolder folder;
    folder.write(
        "7/stat",
        "7 (x) S 6 7 7 0 -1 0 0 0 0 0 1 1 0 0 20 0 1 0 50 100 1 0 0 0 0 0 0 0 0 0 0 0 0 0");
    folder.write("6/comm", "ngin\xFFx: main\n");
    const LinuxProcessInspector inspector(folder.path().string(),
                                          std::make_unique<SilentNetlinkTransport>());
    EXPECT_EQ(inspector.inspect(7).parentName, "ngin\xEF\xBF\xBDx: main");
    folder.link("6/exe", "/usr/sbin/nginx");
    EXPECT_EQ(inspector.inspect(7).parentName, "nginx");
}

class ConnectionsTest : public testing::TestWithParam<bool> {};

// By both ways to the kernel's table.
TEST_P(ConnectionsTest, AreListedInTheOrderOfDescriptors) {
    std::unique_ptr<NetlinkTransport> transport = std::make_unique<SilentNetlinkTransport>();
    if (GetParam())
        transport = std::make_unique<SockDiagTransport>();
    const LinuxProcessInspector inspector("/proc", std::move(transport));
    const std::int64_t before = inspector.inspect(::getpid()).descriptorCount;
    EXPECT_GE(before, 3);
    std::optional<Listener> server(std::in_place);
    const Connection connection(*server);
    const std::uint16_t serverPort = server->port();
    const std::uint16_t clientPort = connection.clientPort();
    server.reset();
    const Listener listener;
    const ProcessFacts facts = inspector.inspect(::getpid());
    EXPECT_EQ(facts.descriptorCount, before + 3);
    // The listener got the descriptor that the one of the connection had left free.
    EXPECT_THAT(facts.tcpSockets,
                ElementsAre(TcpSocket{kIpv4, TcpState::listen, listener.port(), 0},
                            TcpSocket{kIpv4, TcpState::established, clientPort, serverPort},
                            TcpSocket{kIpv4, TcpState::established, serverPort, clientPort}));
}

INSTANTIATE_TEST_SUITE_P(BothWays, ConnectionsTest, testing::Bool());

TEST(LinuxProcessInspectorTest, ReadsACopyOfProc) {
    const TemporaryFolder folder;
    folder.write("7/stat", "7 (a) S 3 5 6 7 8 9 1 1 1 1 250 50 1 1 1 1 1 1 1000 1 1\n");
    folder.write("7/statm", "300 20 1 1 0 1 0\n");
    folder.link("3/exe", "/opt/p\xff (deleted)");
    folder.link("7/fd/0", "/dev/null");
    folder.link("7/fd/1", "socket:[102]");
    folder.link("7/fd/2", "socket:[999]");
    folder.write("net/tcp", "h\n1: 0:0051 0:0101 06 0:0 0:0 0 0 0 102\n");
    folder.write("net/tcp6", "h\n0: 0:0050 0:C000 01 0:0 0:0 0 33 0 102\n");
    folder.write("meminfo", "MemTotal:  2048 kB\n");
    const LinuxProcessInspector inspector(folder.path().string(),
                                          std::make_unique<SilentNetlinkTransport>());
    EXPECT_EQ(inspector.inspect(7).task.value().startTime.count(), 0)
        << "not known without the start of the machine";

    folder.write("stat", "cpu 1\nbtime 5000\n");
    const auto ticks = ::sysconf(_SC_CLK_TCK);
    const auto page = static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
    EXPECT_EQ(
        inspector.inspect(7),
        (ProcessFacts{TaskInfo{3, ProcessState::sleeping, std::chrono::seconds(5000 + 1000 / ticks),
                               300 * page, 20 * page, std::chrono::milliseconds(300'000 / ticks)},
                      "p\uFFFD",
                      3,
                      {{AddressFamily::ipv6, TcpState::established, 80, 0xC000}}}));
    EXPECT_EQ(inspector.inspect(8), ProcessFacts());
    EXPECT_EQ(inspector.physicalMemoryBytes(), 2048U * 1024);
}

} // namespace
} // namespace zenlot
