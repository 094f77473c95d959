// What the kernel tells, and how it is read.
#include "background_monitor/connector_process_events.h"
#include "background_monitor/live_machine.h"
#include "inventory/linux/failed_connections.h"
#include "inventory/linux/pidfd_set.h"
#include "inventory/linux/unused_socket_watch.h"
#include "inventory/listening_socket.h"
#include "support/child_process.h"
#include "support/listener.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/wait.h>

#include <csignal>
#include <cstring>

namespace zenlot {
namespace {

TEST(OverlapTest, IsWhatTheKernelRefuses) {
    struct Case {
        const char* wanted;
        const char* held;
        bool isV6Only;
        bool overlaps;
    };
    const Case cases[]{
        {"127.0.0.1", "127.0.0.1", false, true},
        {"127.0.0.1", "127.0.0.2", false, false},
        {"127.0.0.1", "0.0.0.0", false, true},
        {"0.0.0.0", "127.0.0.1", false, true},
        {"127.0.0.1", "::", false, true},
        {"127.0.0.1", "::", true, false},
        {"::", "127.0.0.1", false, true},
        {"::1", "127.0.0.1", false, false},
        {"::1", "0.0.0.0", false, false},
        {"[::1]", "::", true, true},
        {"127.0.0.1", "::ffff:127.0.0.1", false, true},
    };
    for (const auto& [wanted, held, isV6Only, expected] : cases) {
        const ListeningSocket holder{*IpAddress::parse(held), isV6Only, 80, 0, 0};
        EXPECT_EQ(overlaps(*IpAddress::parse(wanted), holder), expected)
            << wanted << " and " << held;
    }
    EXPECT_EQ(IpAddress::parse("localhost"), std::nullopt);
}

TEST(HolderOfAnotherUserTest, IsNamedByItsGroupOrByItsArguments) {
    const std::pair<const char*, const char*> groups[]{
        {"nginx.service", "nginx"},
        {"docker-0123456789abcdef0123.scope", "docker-0123456789ab"},
        {"session-2.scope", ""},
    };
    for (const auto& [folder, name] : groups)
        EXPECT_EQ(nameOfControlGroup(folder), name);
    using std::string_view_literals::operator""sv;
    EXPECT_TRUE(mentionsNumber("docker-proxy\0-host-port\0"
                               "8080"sv,
                               8080));
    EXPECT_TRUE(mentionsNumber("server\0--listen=:8080/x"sv, 8080));
    EXPECT_FALSE(mentionsNumber("server\0"
                                "18080\0"
                                "80800"sv,
                                8080));
}

// Waits until the socket is readable; false when nothing comes.
bool waitFor(int descriptor) {
    pollfd readable{descriptor, POLLIN, 0};
    return ::poll(&readable, 1, 10'000) == 1;
}

TEST(UnusedSocketWatchTest, SeesAFailedBindAndTheEndOfAListenerButNoConnections) {
    UnusedSocketWatch watch;
    ASSERT_GE(watch.descriptor(), 0);
    std::uint16_t port = 0;
    std::uint16_t clientPort = 0;
    {
        const Listener listener(AF_INET6);
        port = listener.port();
        sockaddr_in6 address{};
        address.sin6_family = AF_INET6;
        address.sin6_addr = in6addr_loopback;
        address.sin6_port = htons(listener.port());
        const auto* generic = reinterpret_cast<const sockaddr*>(&address);
        const FileDescriptor client(::socket(AF_INET6, SOCK_STREAM, 0));
        EXPECT_EQ(::connect(client.get(), generic, sizeof address), 0);
        sockaddr_in6 own{};
        socklen_t length = sizeof own;
        ::getsockname(client.get(), reinterpret_cast<sockaddr*>(&own), &length);
        clientPort = ntohs(own.sin6_port);
        const FileDescriptor second(::socket(AF_INET6, SOCK_STREAM, 0));
        EXPECT_NE(::bind(second.get(), generic, sizeof address), 0);
    }
    const FileDescriptor last(::socket(AF_INET, SOCK_STREAM, 0));
    FileDescriptor(::socket(AF_INET, SOCK_STREAM, 0)) = FileDescriptor();
    std::vector<UnusedSocket> seen;
    const UnusedSocket failed{UnusedSocket::Kind::unbound, AddressFamily::ipv6, 0};
    const UnusedSocket end{UnusedSocket::Kind::unbound, AddressFamily::ipv4, 0};
    const auto isOn = [](std::uint16_t number) {
        return [number](const UnusedSocket& socket) { return socket.port == number; };
    };
    // Others may leave such sockets at the same time.
    while (std::ranges::find(seen, failed) == seen.end() ||
           std::ranges::find(seen, end) == seen.end()) {
        ASSERT_TRUE(waitFor(watch.descriptor()));
        watch.read([&seen](UnusedSocket socket) { seen.push_back(socket); });
    }
    // A connection that nobody has accepted loses its peer and dies with the listener.
    EXPECT_TRUE(std::ranges::any_of(seen, isOn(port)));
    EXPECT_FALSE(std::ranges::any_of(seen, isOn(clientPort)));
}

TEST(UnusedSocketWatchTest, SeesWhoAskedANameServerAndNoOtherDatagrams) {
    UnusedSocketWatch watch;
    ASSERT_GE(watch.descriptor(), 0);
    for (const std::uint16_t port : {std::uint16_t{54}, std::uint16_t{53}}) {
        sockaddr_in server{};
        server.sin_family = AF_INET;
        server.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        server.sin_port = htons(port);
        const FileDescriptor client(::socket(AF_INET, SOCK_DGRAM, 0));
        ASSERT_EQ(
            ::connect(client.get(), reinterpret_cast<const sockaddr*>(&server), sizeof server), 0);
    }
    std::vector<UnusedSocket::Kind> seen;
    while (std::ranges::find(seen, UnusedSocket::Kind::nameQuestion) == seen.end()) {
        ASSERT_TRUE(waitFor(watch.descriptor()));
        watch.read([&seen](UnusedSocket socket) { seen.push_back(socket.kind); });
    }
    EXPECT_EQ(std::ranges::count(seen, UnusedSocket::Kind::nameQuestion), 1);
}

TEST(PidfdSetTest, TellsOfEachEndOnceAndOnlyOfThoseThatAreWatched) {
    ChildProcess first;
    ChildProcess second;
    PidfdSet set;
    const ProcessId ended = first.pid();
    set.assign({ended, second.pid(), ended});
    EXPECT_TRUE(set.takeEnded().empty());
    first.end();
    ASSERT_TRUE(waitFor(set.descriptor()));
    EXPECT_EQ(set.takeEnded(), std::vector{ended});
    EXPECT_TRUE(set.takeEnded().empty());
    set.assign({});
    second.end();
    EXPECT_TRUE(set.takeEnded().empty());
}

TEST(FailedConnectionsTest, CountsThoseThatFoundNoRoute) {
    EXPECT_EQ(decodeOutNoRoutes("Ip: Forwarding OutNoRoutes X\nIp: 1 42 3\nIcmp: x\n"), 42U);
    EXPECT_EQ(decodeOutNoRoutes("Ip: Forwarding OutNoRoutes\nIp: 1\n"), std::nullopt);
    EXPECT_EQ(decodeOutNoRoutes(""), std::nullopt);

    const TemporaryFolder folder;
    const auto counts = [&folder](const char* count) {
        folder.write("self/net/snmp", std::string("Ip: OutNoRoutes\nIp: ") + count + "\n");
    };
    counts("7");
    FailedConnections failed(folder.path().string());
    EXPECT_EQ(failed.sinceLastTime(), 0U);
    counts("9");
    EXPECT_EQ(failed.sinceLastTime(), 2U);
    EXPECT_EQ(failed.sinceLastTime(), 0U);
    counts("nothing");
    EXPECT_EQ(failed.sinceLastTime(), 0U);
}

TEST(UnusedSocketWatchTest, ConnectionOverIpv6KeepsItsDestination) {
    inet_diag_msg message{};
    message.idiag_family = AF_INET6;
    message.idiag_state = TCP_CLOSE;
    const auto decoded = [&message](const char* destination) {
        ::inet_pton(AF_INET6, destination, &message.id.idiag_dst);
        std::vector<std::byte> datagram(NLMSG_HDRLEN + sizeof message);
        std::memcpy(datagram.data() + NLMSG_HDRLEN, &message, sizeof message);
        return decodeUnusedSocket(datagram);
    };
    using enum UnusedSocket::Kind;
    EXPECT_EQ(decoded("::"), (UnusedSocket{unbound, AddressFamily::ipv6}));
    EXPECT_EQ(decoded("2001:db8::1"), (UnusedSocket{failedConnection, AddressFamily::ipv6}));
    EXPECT_EQ(decoded("::ffff:10.0.0.1"), (UnusedSocket{failedConnection, AddressFamily::ipv4}));
}

std::vector<std::byte> processEvent(std::uint32_t kind, std::uint32_t thread, std::uint32_t process,
                                    std::uint32_t status) {
    const std::uint32_t words[]{kind, 0, 0, 0, thread, process, status, 17, 1, 1};
    std::vector<std::byte> datagram(36 + sizeof words);
    std::memcpy(datagram.data() + 36, words, sizeof words);
    return datagram;
}

TEST(ProcessConnectorTest, DecodesStartsAndEndsOfProcesses) {
    EXPECT_EQ(decodeProcessEvent(processEvent(2, 42, 42, 0)),
              (ProcessEvent{ProcessEvent::Kind::exec, 42, 0}));
    EXPECT_EQ(decodeProcessEvent(processEvent(0x80000000, 42, 42, 256)),
              (ProcessEvent{ProcessEvent::Kind::exit, 42, 256}));
    EXPECT_EQ(decodeProcessEvent(processEvent(0x80000000, 43, 42, 256)), std::nullopt);
    EXPECT_EQ(decodeProcessEvent(processEvent(1, 42, 42, 0)), std::nullopt);
    const std::vector<std::byte> whole = processEvent(0x80000000, 42, 42, 256);
    for (std::size_t length = 0; length < 64; ++length)
        EXPECT_EQ(decodeProcessEvent(std::span(whole).first(length)), std::nullopt) << length;
}

TEST(ProcessConnectorTest, PeopleStopProgramsAndErrorsEndThem) {
    for (const int status : {SIGINT, SIGTERM, 130 << 8, 143 << 8, 0})
        EXPECT_EQ(processEndOf(status), ProcessEnd::stopped) << status;
    for (const int status : {SIGABRT, SIGSEGV, 1 << 8, 98 << 8, 255 << 8})
        EXPECT_EQ(processEndOf(status), ProcessEnd::failed) << status;
}

// Where the kernel refuses, as in most containers, there is nothing to hear.
TEST(ProcessConnectorTest, HearsAChildFailWhereItIsOpen) {
    ProcessConnector connector;
    if (!connector.isOpen())
        GTEST_SKIP() << "the kernel tells nothing here";
    const ProcessId child = ::fork();
    if (child == 0)
        ::_exit(3);
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    std::vector<ProcessEvent> seen;
    const ProcessEvent expected{ProcessEvent::Kind::exit, child, status};
    while (std::ranges::find(seen, expected) == seen.end()) {
        ASSERT_TRUE(waitFor(connector.descriptor()));
        connector.read([&seen](const ProcessEvent& event) { seen.push_back(event); });
    }
}

} // namespace
} // namespace zenlot
