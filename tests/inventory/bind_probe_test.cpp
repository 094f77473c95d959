#include "inventory/bind_probe.h"
#include "support/listener.h"

#include <gtest/gtest.h>

#include <dirent.h>
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <optional>

namespace zenlot {
namespace {

std::ptrdiff_t openDescriptors() {
    const std::filesystem::directory_iterator folder("/proc/self/fd");
    return std::distance(begin(folder), end(folder));
}

TEST(BindProbeTest, TellsTakenFromFree) {
    const std::ptrdiff_t before = openDescriptors();
    std::optional<Listener> listener(std::in_place);
    const std::uint16_t port = listener->port();
    EXPECT_TRUE(isPortInUse(port, AddressFamily::ipv4));
    listener.reset();
    EXPECT_FALSE(isPortInUse(port, AddressFamily::ipv4));
    EXPECT_FALSE(isPortInUse(port, AddressFamily::ipv6));
    EXPECT_EQ(openDescriptors(), before);
}

TEST(BindProbeTest, ListenerOnIpv6IsSeenOverIpv6) {
    std::optional<Listener> listener;
    try {
        listener.emplace(AF_INET6);
    } catch (const std::runtime_error&) {
        EXPECT_FALSE(isPortInUse(1, AddressFamily::ipv6)); // a machine without IPv6
        return;
    }
    EXPECT_TRUE(isPortInUse(listener->port(), AddressFamily::ipv6));
}

// In a process of its own, since a test run by root gives its rights away for it.
TEST(BindProbeTest, PortThatMayNotBeBoundCountsAsFree) {
    const pid_t child = ::fork();
    if (child == 0) {
        if (::getuid() == 0 && ::setuid(65534) != 0)
            ::_exit(2);
        ::_exit(isPortInUse(1, AddressFamily::ipv4) ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace zenlot
