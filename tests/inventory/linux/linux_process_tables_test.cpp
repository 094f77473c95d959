#include "inventory/linux/linux_process_tables.h"
#include "inventory/port_scanner.h"
#include "support/listener.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace zenlot {
namespace {

#ifndef IPPROTO_MPTCP
constexpr int IPPROTO_MPTCP = 262;
#endif

// A kernel without socket diagnostics.
class NoTransport final : public NetlinkTransport {
  public:
    bool dump(std::span<const std::byte>, const Consumer&) override { return false; }
};

// The same expectations for both ways to the kernel's table.
class RealTablesTest : public testing::TestWithParam<bool> {
  protected:
    static std::unique_ptr<NetlinkTransport> transport() {
        if (GetParam())
            return std::make_unique<SockDiagTransport>();
        return std::make_unique<NoTransport>();
    }

    LinuxProcessTables tables{"/proc", transport()};
    PortScanner scanner{tables};
};

void expectOwnListener(const std::vector<OccupiedPort>& ports, const Listener& listener,
                       const std::string& proto) {
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const auto found = std::ranges::find(ports, listener.port(), &OccupiedPort::port);
    ASSERT_NE(found, ports.end());
    EXPECT_EQ(found->pid, ::getpid());
    EXPECT_EQ(found->proto, proto);
    EXPECT_EQ(found->executablePath, program);
    EXPECT_EQ(found->processName, program.substr(program.rfind('/') + 1));
    EXPECT_TRUE(found->isCurrentUser());
}

TEST_P(RealTablesTest, FindsItsOwnListeners) {
    const Listener ipv4;
    expectOwnListener(scanner.listOccupiedPorts(), ipv4, "TCP4");
    const auto found = scanner.scanListeningSockets(ipv4.port());
    ASSERT_EQ(found.size(), 1U);
    expectOwnListener(found, ipv4, "TCP4");
    if (std::filesystem::exists("/proc/net/tcp6")) {
        const Listener ipv6(AF_INET6);
        expectOwnListener(scanner.scanListeningSockets(ipv6.port()), ipv6, "TCP6");
    }
}

TEST_P(RealTablesTest, FindsMultipathListeners) {
    std::optional<Listener> multipath;
    try {
        multipath.emplace(AF_INET, IPPROTO_MPTCP);
    } catch (const std::runtime_error&) {
        return; // a kernel without multipath TCP has none to find
    }
    expectOwnListener(scanner.listOccupiedPorts(), *multipath, "TCP4");
}

TEST_P(RealTablesTest, ClosedListenerIsGone) {
    const std::uint16_t port = Listener().port();
    EXPECT_TRUE(scanner.scanListeningSockets(port).empty());
}

INSTANTIATE_TEST_SUITE_P(BothWays, RealTablesTest, testing::Bool(), [](const auto& way) {
    return way.param ? "SocketDiagnostics" : "ProcNetTcp";
});

TEST(LinuxProcessTablesTest, ReadsACopyOfProc) {
    const TemporaryFolder folder;
    folder.write("net/tcp", "h\n0: 0:0050 0:0000 0A 0:0 0:0 0 33 0 100\n"
                            "1: 0:0051 0:0000 0A 0:0 0:0 0 0 0 0\n");
    folder.write("net/tcp6", "h\n0: 0:0050 0:0000 0A 0:0 0:0 0 33 0 101\n");
    folder.link("7/fd/9", "socket:[101]");
    folder.link("7/exe", "/opt/b\xff"
                         "d");
    folder.write("7/status", "Uid:\t33\t33\t33\t33\n");
    folder.link("8/fd/3", "socket:[999]");
    const LinuxProcessTables tables(folder.path().string(), std::make_unique<NoTransport>());
    EXPECT_EQ(
        PortScanner(tables).listOccupiedPorts(),
        (std::vector<OccupiedPort>{{80, "TCP6", "b\uFFFDd", "B\uFFFDd", 7, "33", "/opt/b\uFFFDd"},
                                   {81, "TCP4", "", "", 0, "0", ""}}));
    const auto snapshot = tables.beginSnapshot(std::nullopt);
    // No process can show a socket without an inode, so the walk need not look for one.
    EXPECT_EQ(snapshot->attributablePorts(), std::vector<std::uint16_t>{80});
    EXPECT_TRUE(tables.beginSnapshot(65536 + 80)->tcpTable().empty());
}

} // namespace
} // namespace zenlot
