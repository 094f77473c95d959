#include "inventory/bind_probe.h"
#include "support/listener.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

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
