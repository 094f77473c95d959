#include "inventory/linux/socket_index.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

TEST(SocketIndexTest, FindsEverySocketAndNothingElse) {
    EXPECT_EQ(SocketIndex().find(1), nullptr);
    std::vector<KernelTcpSocket> sockets{{{}, 0, 0}};
    // Strides of powers of two are what a weak hash would pile up.
    for (std::uint64_t i = 1; i <= 2000; ++i)
        sockets.push_back(
            {{AddressFamily::ipv4, TcpState::listen, static_cast<std::uint16_t>(i), 0},
             0,
             i << 20});
    const SocketIndex index(sockets);
    for (std::uint64_t i = 1; i <= 2000; ++i) {
        ASSERT_NE(index.find(i << 20), nullptr);
        EXPECT_EQ(index.find(i << 20)->localPort, i);
        EXPECT_EQ(index.find((i << 20) + 1), nullptr);
    }
    EXPECT_EQ(index.find(0), nullptr);
}

} // namespace
} // namespace zenlot
