#include "inventory/linux/linux_process_tables.h"
#include "inventory/linux/socket_index.h"
#include "inventory/port_scanner.h"
#include "support/listener.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

// A kernel without socket diagnostics.
class NoTransport final : public NetlinkTransport {
  public:
    bool dump(std::span<const std::byte>, const Consumer&) override { return false; }
};

TEST(LinuxProcessTablesTest, FindsRealListenersBothWays) {
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const LinuxProcessTables withDiagnostics("/proc", std::make_unique<SockDiagTransport>());
    const LinuxProcessTables without("/proc", std::make_unique<NoTransport>());
    const std::pair<int, int> kinds[] = {{AF_INET, 0}, {AF_INET6, 0}, {AF_INET, IPPROTO_MPTCP}};
    for (const auto& [family, protocol] : kinds) {
        std::optional<Listener> listener;
        try {
            listener.emplace(family, protocol);
        } catch (const std::runtime_error&) {
            EXPECT_TRUE(family == AF_INET6 || protocol != 0); // not every kernel has these
            continue;
        }
        const std::uint16_t port = listener->port();
        for (const LinuxProcessTables* tables : {&withDiagnostics, &without}) {
            const PortScanner scanner(*tables);
            const auto found = scanner.scanListeningSockets(port);
            ASSERT_EQ(found.size(), 1U) << family << ' ' << protocol;
            EXPECT_EQ(found[0].pid, ::getpid());
            EXPECT_EQ(found[0].proto, family == AF_INET6 ? "TCP6" : "TCP4");
            EXPECT_EQ(found[0].executablePath, program);
            EXPECT_THAT(scanner.listOccupiedPorts(), testing::Contains(found[0]));
        }
    }
}

TEST(LinuxProcessTablesTest, ReadsACopyOfProc) {
    const TemporaryFolder folder;
    folder.write("net/tcp", "h\n0: 0:0050 0:0000 0A 0:0 0:0 0 33 0 100\n"
                            "1: 0:0051 0:0000 0A 0:0 0:0 0 0 0 0\n");
    folder.write("net/tcp6", "h\n0: 0:0050 0:0000 0A 0:0 0:0 0 33 0 101\n");
    folder.link("7/fd/9", "socket:[101]");
    folder.link("7/exe", "/opt/\xff");
    folder.write("7/status", "Uid:\t33\t33\t33\t33\n");
    const LinuxProcessTables tables(folder.path().string(), std::make_unique<NoTransport>());
    const std::vector<OccupiedPort> expected{
        {80, "TCP6", "\uFFFD", "\uFFFD", 7, "33", "/opt/\uFFFD"}, {81, "TCP4", "", "", 0, "0", ""}};
    EXPECT_EQ(PortScanner(tables).listOccupiedPorts(), expected);
    // No process can show a socket without an inode, so the walk need not look for one.
    EXPECT_EQ(tables.beginSnapshot({})->attributablePorts(), std::vector<std::uint16_t>{80});
    EXPECT_TRUE(tables.beginSnapshot(65536 + 80)->tcpTable().empty());
    EXPECT_EQ(tables.beginSnapshot(80)->tcpTable().back().identity, 101U);
}

TEST(SocketIndexTest, FindsEverySocketAndNothingElse) {
    EXPECT_EQ(SocketIndex().find(1), nullptr);
    std::vector<KernelTcpSocket> sockets(2000);
    for (std::size_t i = 1; i < sockets.size(); ++i)
        sockets[i] = {{{}, {}, static_cast<std::uint16_t>(i), 0}, 0, i << 20};
    const SocketIndex index(sockets);
    for (std::size_t i = 1; i < sockets.size(); ++i) {
        ASSERT_TRUE(index.find(i << 20) && index.find(i << 20)->localPort == i) << i;
        EXPECT_EQ(index.find((i << 20) + 1), nullptr);
    }
    EXPECT_EQ(index.find(0), nullptr);
}

} // namespace
} // namespace zenlot
