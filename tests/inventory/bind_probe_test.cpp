#include "inventory/bind_probe.h"
#include "support/listener.h"

#include <gtest/gtest.h>

#include <fcntl.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <thread>

namespace zenlot {
namespace {

TEST(BindProbeTest, TellsTakenFromFree) {
    std::optional<Listener> listener(std::in_place);
    const std::uint16_t port = listener->port();
    EXPECT_TRUE(isPortInUse(port, AddressFamily::ipv4));
    listener.reset();
    EXPECT_FALSE(isPortInUse(port, AddressFamily::ipv4));
    EXPECT_FALSE(isPortInUse(port, AddressFamily::ipv4)); // the probe itself holds nothing
    try {
        listener.emplace(AF_INET6);
        EXPECT_TRUE(isPortInUse(listener->port(), AddressFamily::ipv6));
    } catch (const std::runtime_error&) { // a machine without IPv6
    }
}

// A child that another thread starts during a probe would hold the port on.
TEST(BindProbeTest, LeavesNothingToChildren) {
    const int descriptor = ::dup(STDIN_FILENO); // the number that the probe's socket will have
    ::close(descriptor);
    std::atomic<int> seen{0};
    int inheritable = 0;
    std::jthread watcher([&](const std::stop_token& stop) {
        while (seen < 100 && !stop.stop_requested()) {
            if (const int flags = ::fcntl(descriptor, F_GETFD); flags >= 0) {
                ++seen;
                inheritable += (flags & FD_CLOEXEC) == 0 ? 1 : 0;
            }
        }
    });
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (seen < 100 && std::chrono::steady_clock::now() < deadline)
        isPortInUse(0, AddressFamily::ipv4);
    watcher.request_stop();
    watcher.join();
    EXPECT_GE(seen, 100);
    EXPECT_EQ(inheritable, 0);
}

// In a process of its own, since a test run by root gives its rights away for it.
TEST(BindProbeDeathTest, PortThatMayNotBeBoundCountsAsFree) {
    const auto probe = [] {
        const bool hasRights = ::getuid() == 0 && ::setuid(65534) != 0;
        std::exit(hasRights || isPortInUse(1, AddressFamily::ipv4) ? 1 : 0);
    };
    EXPECT_EXIT(probe(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace zenlot
