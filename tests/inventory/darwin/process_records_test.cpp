#include "inventory/darwin/kernel_bytes.h"
#include "inventory/darwin/process_records.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace test;
using testing::ElementsAre;

TEST(ProcessRecordsTest, SocketDescriptorsAreThoseOfTypeTwoInOrder) {
    const Bytes all =
        joined({descriptor(9), descriptor(3, 1), descriptor(-1), descriptor(4, 6), descriptor(5)});
    EXPECT_THAT(decodeSocketDescriptors(all), ElementsAre(9, -1, 5));
    EXPECT_THAT(decodeSocketDescriptors(std::span(all).first(39)), ElementsAre(9, -1));
    EXPECT_THAT(decodeSocketDescriptors(std::span(all).first(7)), ElementsAre());
}

TEST(ProcessRecordsTest, ReadsATcpSocket) {
    EXPECT_EQ(decodeTcpSocket(socketInfo(
                  {.localPort = 0xbeef, .family = 30, .state = 4, .foreignPort = 0x1234})),
              (TcpSocket{AddressFamily::ipv6, TcpState::established, 0xbeef, 0x1234}));
    // Any other family counts as IPv4.
    EXPECT_EQ(decodeTcpSocket(socketInfo({.localPort = 1, .family = 10}))->family,
              AddressFamily::ipv4);
}

TEST(ProcessRecordsTest, NumbersOfTcpStates) {
    const TcpState states[]{
        TcpState::closed,      TcpState::listen,    TcpState::synSent,  TcpState::synReceived,
        TcpState::established, TcpState::closeWait, TcpState::finWait1, TcpState::closing,
        TcpState::lastAck,     TcpState::finWait2,  TcpState::timeWait, TcpState::unknown,
    };
    for (int number = 0; number < static_cast<int>(std::size(states)); ++number)
        EXPECT_EQ(decodeTcpSocket(socketInfo({.state = number}))->state, states[number]) << number;
    for (const int number : {-1, INT32_MIN, INT32_MAX})
        EXPECT_EQ(decodeTcpSocket(socketInfo({.state = number}))->state, TcpState::unknown);
}

TEST(ProcessRecordsTest, OnlyACompleteTcpSocketIsOne) {
    for (const int kind : {0, 1, 3, 4, -2})
        EXPECT_EQ(decodeTcpSocket(socketInfo({.localPort = 1, .kind = kind})), std::nullopt);
    for (const std::size_t size : {0U, 264U, 791U, 793U}) {
        Bytes info = socketInfo({.localPort = 1});
        info.resize(size);
        EXPECT_EQ(decodeTcpSocket(info), std::nullopt) << size;
    }
}

TEST(ProcessRecordsTest, ReadsBothUsersOfAProcess) {
    const Bytes info = bsdInfo(0, 501);
    const std::optional<ProcessOwner> owner = decodeProcessOwner(info);
    ASSERT_TRUE(owner);
    EXPECT_EQ(owner->effectiveUid, 0U);
    EXPECT_EQ(owner->realUid, 501U);
    EXPECT_FALSE(decodeProcessOwner(std::span(info).first(135)));
}

TEST(ProcessRecordsTest, ReadsPidsOfWholeRecords) {
    const Bytes all = joined({processRecord(0), processRecord(77), processRecord(99998)});
    EXPECT_THAT(decodeProcessIds(all), ElementsAre(0, 77, 99998));
    EXPECT_THAT(decodeProcessIds(std::span(all).first(all.size() - 1)), ElementsAre(0, 77));
}

} // namespace
} // namespace zenlot
