// The real kernel and the real service. Skipped where the kernel does not let this user watch.
#include "bindwatch/bind_events.h"
#include "bindwatch/kernel/bpf_bind_source.h"
#include "support/child_process.h"
#include "support/listener.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace zenlot {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 20s;
// Of two users that have no other processes, and of the service.
constexpr uid_t kFirst = 63'501;
constexpr uid_t kSecond = 63'502;
constexpr const char* kService = "63500";

// Asks for the port on the loopback address; the error, or 0.
int bindTo(std::uint16_t port, int family = AF_INET, int protocol = 0) {
    const FileDescriptor socket(::socket(family, SOCK_STREAM | SOCK_CLOEXEC, protocol));
    sockaddr_in6 address{}; // an IPv4 address fits into it
    auto* ipv4 = reinterpret_cast<sockaddr_in*>(&address);
    address.sin6_family = static_cast<sa_family_t>(family);
    address.sin6_port = htons(port);
    if (family == AF_INET6)
        address.sin6_addr = in6addr_loopback;
    else
        ipv4->sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const socklen_t length = family == AF_INET6 ? sizeof address : sizeof(sockaddr_in);
    return ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), length) == 0 ? 0
                                                                                          : errno;
}

// A process that does something as the user, ends, and is waited for.
pid_t doAs(uid_t user, const std::function<void()>& work) {
    const pid_t child = ::fork();
    if (child == 0) {
        if (user != ::getuid() && (::setgid(user) != 0 || ::setuid(user) != 0))
            ::_exit(1);
        work();
        ::_exit(3);
    }
    ::waitpid(child, nullptr, 0);
    return child;
}

class BpfBindSourceTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!source.load())
            GTEST_SKIP() << source.why();
        ASSERT_TRUE(source.follow(kFirst));
        ASSERT_TRUE(source.follow(::getuid()));
        ASSERT_TRUE(source.start());
    }

    // The process's events until its end is told, and a little of other processes' time.
    std::vector<BindEvent> eventsOf(pid_t process, BindKind last) {
        std::vector<BindEvent> events;
        const auto end = std::chrono::steady_clock::now() + kPatience;
        while (std::chrono::steady_clock::now() < end) {
            pollfd wait{source.descriptor(), POLLIN, 0};
            ::poll(&wait, 1, 100);
            source.read([&](const BindEvent& event) {
                if (event.process == static_cast<std::uint32_t>(process))
                    events.push_back(event);
            });
            if (!events.empty() && events.back().kind == last)
                break;
        }
        return events;
    }

    BpfBindSource source;
};

struct Refusal {
    const char* name;
    int family;
    int protocol;
};

class RefusedBindTest : public BpfBindSourceTest, public testing::WithParamInterface<Refusal> {};

TEST_P(RefusedBindTest, IsToldWithEverything) {
    if (GetParam().protocol != 0 &&
        !FileDescriptor(::socket(GetParam().family, SOCK_STREAM, GetParam().protocol)))
        GTEST_SKIP() << "the kernel has no such protocol";
    const Listener holder(GetParam().family);
    const pid_t process =
        doAs(kFirst, [&] { bindTo(holder.port(), GetParam().family, GetParam().protocol); });
    const std::vector<BindEvent> events = eventsOf(process, ZENLOT_PROCESS_ENDED);
    ASSERT_EQ(events.size(), 2U);
    const BindEvent& refused = events.front();
    EXPECT_EQ(refused.kind, ZENLOT_BIND_REFUSED);
    EXPECT_EQ(refused.error, EADDRINUSE);
    EXPECT_EQ(refused.port, holder.port());
    EXPECT_EQ(refused.family, GetParam().family == AF_INET ? 4 : 6);
    EXPECT_EQ(refused.address[GetParam().family == AF_INET ? 3 : 15], 1) << "of loopback";
    EXPECT_EQ(refused.user, kFirst);
    EXPECT_EQ(refused.thread, refused.process);
    EXPECT_EQ(refused.parent, static_cast<std::uint32_t>(::getpid()));
    EXPECT_EQ(commandOf(refused), "bindwatch_kerne") << "cut by the kernel";
    struct stat network {};
    ::stat("/proc/self/ns/net", &network);
    EXPECT_EQ(refused.network_inode, network.st_ino);
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    EXPECT_LT(refused.process_started_at, refused.happened_at);
    EXPECT_LE(refused.happened_at / 1'000'000'000, static_cast<std::uint64_t>(now.tv_sec));
    EXPECT_EQ(WEXITSTATUS(events.back().error), 3);
}

INSTANTIATE_TEST_SUITE_P(Families, RefusedBindTest,
                         testing::Values(Refusal{"Ipv4", AF_INET, 0}, Refusal{"Ipv6", AF_INET6, 0},
                                         Refusal{"Mptcp", AF_INET, IPPROTO_MPTCP}),
                         [](const auto& refusal) { return refusal.param.name; });

TEST_F(BpfBindSourceTest, MissingPermissionIsToldApart) {
    int firstForEverybody = 0;
    std::ifstream("/proc/sys/net/ipv4/ip_unprivileged_port_start") >> firstForEverybody;
    if (firstForEverybody <= 81)
        GTEST_SKIP() << "everybody may have port 81 here";
    const pid_t process = doAs(kFirst, [] { bindTo(81); });
    const std::vector<BindEvent> events = eventsOf(process, ZENLOT_PROCESS_ENDED);
    ASSERT_FALSE(events.empty());
    EXPECT_EQ(events.front().kind, ZENLOT_BIND_REFUSED);
    EXPECT_EQ(events.front().error, EACCES);
}

TEST_F(BpfBindSourceTest, ListenersAreToldFromTheirBeginningToTheirEnd) {
    std::uint16_t port = 0;
    {
        const Listener listener(AF_INET6, IPPROTO_MPTCP);
        port = listener.port();
    }
    std::vector<BindEvent> events = eventsOf(::getpid(), ZENLOT_LISTENER_ENDED);
    ASSERT_EQ(events.size(), 3U);
    EXPECT_EQ(events[0].kind, ZENLOT_BOUND);
    EXPECT_NE(events[0].flags & ZENLOT_KERNEL_CHOSEN, 0);
    EXPECT_EQ(events[1].kind, ZENLOT_LISTENING);
    EXPECT_EQ(events[2].kind, ZENLOT_LISTENER_ENDED);
    for (const BindEvent& event : events)
        EXPECT_EQ(event.port, port) << static_cast<int>(event.kind);
}

TEST_F(BpfBindSourceTest, TakesNoNoteOnceStoppedNorOfWhomNobodyFollows) {
    source.stop();
    const Listener holder;
    const pid_t unseen = doAs(kFirst, [&] { bindTo(holder.port()); });
    ASSERT_TRUE(source.start());
    const pid_t another = doAs(kSecond, [&] { bindTo(holder.port()); });
    const pid_t seen = doAs(kFirst, [&] { bindTo(holder.port()); });
    std::vector<std::uint32_t> processes;
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (processes.empty() && std::chrono::steady_clock::now() < end)
        source.read([&](const BindEvent& event) {
            if (event.user == kFirst || event.user == kSecond)
                processes.push_back(event.process);
        });
    EXPECT_THAT(processes, testing::Each(seen)) << unseen << " and " << another;
}

// As its unit runs it: under a user of its own, with two privileges.
class BindwatchProgramTest : public testing::Test {
  protected:
    void SetUp() override {
        BpfBindSource source;
        if (::getuid() != 0 || !source.load())
            GTEST_SKIP() << "needs root, and the kernel's permission " << source.why();
        ::chmod(folder.path().c_str(), 0777);
        service.emplace([this] {
            return ::execlp("setpriv", "setpriv", "--reuid", kService, "--regid", kService,
                            "--clear-groups", "--inh-caps", "-all,+bpf,+perfmon", "--ambient-caps",
                            "-all,+bpf,+perfmon", "--bounding-set", "-all,+bpf,+perfmon",
                            "--no-new-privs", ZENLOT_BINDWATCH, "--socket", path.c_str(),
                            nullptr) == 0;
        });
    }

    // What SO_PEERCRED tells is who connected. Is greeted before it returns.
    FileDescriptor readerOf(uid_t user) const {
        if (::seteuid(user) != 0)
            return {};
        const auto end = std::chrono::steady_clock::now() + kPatience;
        FileDescriptor reader;
        while (!reader && std::chrono::steady_clock::now() < end)
            reader = connectReader(path);
        if (::seteuid(0) != 0 || !reader)
            return {};
        EXPECT_TRUE(packet(reader)) << "is greeted";
        return reader;
    }

    static std::optional<BindPacket> packet(const FileDescriptor& reader,
                                            std::chrono::milliseconds patience = kPatience) {
        pollfd wait{reader.get(), POLLIN, 0};
        return ::poll(&wait, 1, static_cast<int>(patience.count())) > 0 ? readPacket(reader)
                                                                        : std::nullopt;
    }

    TemporaryFolder folder;
    std::string path = (folder.path() / "binds").string();
    std::optional<ChildProcess> service;
};

TEST_F(BindwatchProgramTest, NobodySeesWhatIsAnothers) {
    const FileDescriptor first = readerOf(kFirst);
    const FileDescriptor second = readerOf(kSecond);
    ASSERT_TRUE(first && second);
    const Listener holder; // of root, who has no reader
    for (const uid_t user : {kFirst, kSecond, uid_t{0}, kFirst})
        doAs(user, [&] { bindTo(holder.port()); });
    for (const auto& [reader, user, expected] :
         {std::tuple(&first, kFirst, 2), std::tuple(&second, kSecond, 1)}) {
        int ends = 0;
        while (ends < expected) {
            const auto told = packet(*reader);
            ASSERT_TRUE(told);
            for (const BindEvent& event : told->events) {
                EXPECT_EQ(event.user, user);
                ends += event.kind == ZENLOT_PROCESS_ENDED;
            }
        }
        EXPECT_FALSE(packet(*reader, 200ms));
    }
}

// Each is told or counted, and another user's come through all the same.
TEST_F(BindwatchProgramTest, AFloodIsCountedAndDrownsNobody) {
    constexpr std::uint64_t kFlood = 20'000;
    const FileDescriptor flooded = readerOf(kFirst);
    const FileDescriptor other = readerOf(kSecond);
    ASSERT_TRUE(flooded && other);
    const Listener holder;
    const ChildProcess flood([&] {
        if (::setuid(kFirst) != 0)
            return false;
        for (std::uint64_t count = 0; count < kFlood; ++count)
            bindTo(holder.port());
        bindTo(0); // each budget is for a tenth of a second
        return true;
    });
    std::uint64_t told = 0;
    std::uint64_t lost = 0;
    bool isOtherTold = false;
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (told + lost < kFlood && std::chrono::steady_clock::now() < end) {
        // A count comes with the next event only.
        doAs(kFirst, [] { bindTo(0); });
        while (const auto next = packet(flooded, 20ms)) {
            lost = next->lost;
            for (const BindEvent& event : next->events)
                told += event.kind == ZENLOT_BIND_REFUSED;
        }
        if (!isOtherTold) {
            doAs(kSecond, [&] { bindTo(holder.port()); });
            const auto next = packet(other);
            isOtherTold = next && !next->events.empty() && next->lost == 0;
        }
    }
    EXPECT_GE(told + lost, kFlood);
    EXPECT_LE(told + lost, kFlood + 200) << "the few that were only there to fetch the count";
    EXPECT_GT(told, 0U);
    EXPECT_GT(lost, 0U) << "or it was no flood";
    EXPECT_TRUE(isOtherTold);
    EXPECT_TRUE(service->isRunning());
}

} // namespace
} // namespace zenlot
