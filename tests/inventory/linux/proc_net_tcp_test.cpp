#include "inventory/linux/proc_net_tcp.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

constexpr const char* kIpv4Table =
    "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt   uid  timeout "
    "inode                                                     \n"
    "   0: 0100007F:1F90 00000000:0000 0A 00000000:00000000 00:00000000 00000000  1000        0 "
    "31337 1 0000000000000000 100 0 0 10 0                     \n"
    "   1: 0100007F:1F90 0100007F:C001 01 00000000:00000000 00:00000000 00000000  1000        0 "
    "31338 1 0000000000000000 20 4 30 10 -1                    \n"
    "   2: 00000000:0016 00000000:0000 0A 00000000:00000000 00:00000000 00000000     0        0 "
    "21 1 0000000000000000 100 0 0 10 0                        \n";

TEST(ProcNetTcpTest, KeepsTheListeners) {
    std::vector<KernelTcpSocket> sockets;
    decodeProcNetTcp(kIpv4Table, AddressFamily::ipv4, sockets);
    decodeProcNetTcp("1: 00000000000000000000000001000000:0050 "
                     "00000000000000000000000000000000:0000 0A 0:0 00:0 0 33 0 5",
                     AddressFamily::ipv6, sockets);
    const auto listening = [](AddressFamily family, std::uint16_t port) {
        return TcpSocket{family, TcpState::listen, port, 0};
    };
    EXPECT_EQ(sockets,
              (std::vector<KernelTcpSocket>{{listening(AddressFamily::ipv4, 8080), 1000, 31337},
                                            {listening(AddressFamily::ipv4, 22), 0, 21},
                                            {listening(AddressFamily::ipv6, 80), 33, 5}}));
}

TEST(ProcNetTcpTest, SkipsLinesThatMakeNoSense) {
    std::vector<KernelTcpSocket> sockets;
    for (const char* text :
         {"", "\n\n", "0:", "0: 0100007F:1F90 0:0 0A 0 0 0 0 0", // too few columns
          "0: 0100007F:1FFFF 0:0 0A 0:0 0:0 0 0 0 1", "0: F:50 F:0 0A a b c x 0 1", // no numbers
          "0: F50 F:0 0A 0:0 0:0 0 0 0 1", "0: F:50 F:0 0A 0:0 0:0 0 0 0 99999999999999999999"})
        decodeProcNetTcp(text, AddressFamily::ipv4, sockets);
    EXPECT_TRUE(sockets.empty());
    const std::string text = kIpv4Table;
    for (std::size_t length = 0; length < text.size(); ++length)
        decodeProcNetTcp(text.substr(0, length), AddressFamily::ipv4, sockets);
}

} // namespace
} // namespace zenlot
