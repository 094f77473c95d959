#include "inventory/linux/fake_netlink_transport.h"
#include "inventory/linux/linux_process_tables.h"
#include "inventory/linux/listening_socket_reader.h"
#include "inventory/port_scanner.h"
#include "support/connection.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

namespace zenlot {
namespace {

TEST(LinuxProcessTablesTest, FindsRealListenersBothWays) {
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const LinuxProcessTables withDiagnostics("/proc", std::make_unique<SockDiagTransport>());
    const LinuxProcessTables without("/proc", std::make_unique<SilentNetlinkTransport>());
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
    const LinuxProcessTables tables(folder.path().string(),
                                    std::make_unique<SilentNetlinkTransport>());
    const std::vector<OccupiedPort> expected{
        {80, "TCP6", "\uFFFD", "\uFFFD", 7, "33", "/opt/\uFFFD"}, {81, "TCP4", "", "", 0, "0", ""}};
    EXPECT_EQ(PortScanner(tables).listOccupiedPorts(), expected);
    // No process can show a socket without an inode, so the walk need not look for one.
    EXPECT_EQ(tables.beginSnapshot({})->attributablePorts(), std::vector<std::uint16_t>{80});
    EXPECT_TRUE(tables.beginSnapshot(65536 + 80)->tcpTable().empty());
    EXPECT_EQ(tables.beginSnapshot(80)->tcpTable().back().identity, 101U);
}

// The families of which neither source told, of copies of /proc with these files.
TEST(LinuxProcessTablesTest, SilenceIsNotAnEmptyTable) {
    using Families = std::vector<AddressFamily>;
    const auto silentFamilies = [](std::initializer_list<const char*> files) {
        const TemporaryFolder folder;
        for (const char* file : files)
            folder.write(file, "heading\n");
        const LinuxProcessTables tables(folder.path().string(),
                                        std::make_unique<SilentNetlinkTransport>());
        return tables.beginSnapshot(80)->silentFamilies();
    };
    const Families both{AddressFamily::ipv4, AddressFamily::ipv6};
    EXPECT_EQ(silentFamilies({"net/tcp", "net/tcp6"}), Families());
    EXPECT_EQ(silentFamilies({"net/tcp"}), Families()) << "a kernel without IPv6";
    EXPECT_EQ(silentFamilies({"net/tcp6"}), Families{AddressFamily::ipv4});
    EXPECT_EQ(silentFamilies({"net/tcp", "net/tcp6/is a folder"}), Families{AddressFamily::ipv6});
    EXPECT_EQ(silentFamilies({"net/tcp/is a folder"}), Families{AddressFamily::ipv4});
    EXPECT_EQ(silentFamilies({}), both);
    const LinuxProcessTables nowhere("/nonexistent", std::make_unique<SilentNetlinkTransport>());
    EXPECT_EQ(nowhere.beginSnapshot({})->silentFamilies(), both);
    EXPECT_EQ(nowhere.beginSnapshot(65536)->silentFamilies(), Families());
}

TEST(ListeningSocketsTest, HaveTheirAddressesBothWays) {
    const ProcFiles procFiles;
    SockDiagTransport diagnostics;
    SilentNetlinkTransport none;
    for (const int family : {AF_INET, AF_INET6}) {
        const Listener listener(family);
        for (NetlinkTransport* transport :
             std::initializer_list<NetlinkTransport*>{&diagnostics, &none}) {
            const auto sockets = readListeningSockets(procFiles, *transport, listener.port());
            ASSERT_EQ(sockets.size(), 1U);
            EXPECT_EQ(sockets[0].address,
                      IpAddress::parse(family == AF_INET ? "127.0.0.1" : "::1"));
            EXPECT_EQ(sockets[0].ownerUid, ::getuid());
            EXPECT_NE(sockets[0].inode, 0U);
        }
    }
}

// What the kernel says itself, with no probe that could add to it.
TEST(LinuxProcessTablesTest, PortsOfConnectionsAreFree) {
    const LinuxProcessTables diagnostics("/proc", std::make_unique<SockDiagTransport>());
    const LinuxProcessTables text("/proc", std::make_unique<SilentNetlinkTransport>());
    int probes = 0;
    const auto expectFree = [&](std::uint16_t port) {
        EXPECT_TRUE(isPortInUse(port, AddressFamily::ipv4)) << "proves nothing";
        const BindProbe probe = [&](std::uint16_t, AddressFamily) { return ++probes > 0; };
        for (const LinuxProcessTables* tables : {&diagnostics, &text})
            EXPECT_TRUE(PortScanner(*tables, probe).scanListeningSockets(port).empty());
        EXPECT_EQ(probes, 0);
    };
    std::optional<Listener> server(std::in_place);
    const std::uint16_t port = server->port();
    std::optional<Connection> connection(std::in_place, *server);
    expectFree(connection->clientPort());
    server.reset();
    connection->closeServerSide();
    expectFree(port); // the client has not yet said good-bye
    connection.reset();
    expectFree(port); // the kernel waits for stray packets
}

} // namespace
} // namespace zenlot
