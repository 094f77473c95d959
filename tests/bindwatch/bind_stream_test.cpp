// The packets: what is written is read, and what is no packet is refused, whatever its bytes are.
#include "bindwatch/bind_events.h"
#include "bindwatch/bind_stream.h"
#include "bindwatch/peer_queue.h"

#include <gmock/gmock.h>

#include <cstring>

namespace zenlot {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::Field;

std::vector<std::byte> twoEvents() {
    const std::vector<BindEvent> events{bindEvent(ZENLOT_BIND_REFUSED, 10, 3000),
                                        bindEvent(ZENLOT_PROCESS_ENDED, 10, 0)};
    return encodeBindPacket(5, events);
}

TEST(BindStreamTest, WhatIsWrittenIsRead) {
    const auto packet = decodeBindPacket(twoEvents());
    ASSERT_TRUE(packet);
    EXPECT_EQ(packet->lost, 5U);
    EXPECT_THAT(packet->events, ElementsAre(Field(&BindEvent::port, 3000),
                                            Field(&BindEvent::kind, ZENLOT_PROCESS_ENDED)));
    EXPECT_EQ(commandOf(packet->events.front()), "node");
}

TEST(BindStreamTest, ALaterVersionsLongerRecordsAndNewKindsAreRead) {
    constexpr std::size_t kHead = 24;
    constexpr std::uint16_t kLonger = sizeof(BindEvent) + 8;
    BindEvent unknown = bindEvent(ZENLOT_LISTENING, 11, 80);
    unknown.kind = 99;
    std::vector<std::byte> bytes = twoEvents();
    std::vector<std::byte> longer(bytes.begin(), bytes.begin() + kHead);
    std::memcpy(longer.data() + 6, &kLonger, sizeof kLonger);
    for (const BindEvent& event : {bindEvent(ZENLOT_LISTENING, 12, 81), unknown}) {
        longer.resize(longer.size() + kLonger);
        std::memcpy(longer.data() + longer.size() - kLonger, &event, sizeof event);
    }
    const auto packet = decodeBindPacket(longer);
    ASSERT_TRUE(packet);
    EXPECT_THAT(packet->events, ElementsAre(Field(&BindEvent::port, 81)));
}

TEST(PeerQueueTest, GreetsFirstThenGivesEventsInOrder) {
    PeerQueue queue;
    const PeerQueue::Time now{};
    queue.push(bindEvent(ZENLOT_BOUND, 1, 1), now);
    EXPECT_TRUE(decodeBindPacket(queue.nextPacket(0))->events.empty());
    queue.dropPacket();
    for (std::uint16_t port = 2; port <= 100; ++port)
        queue.push(bindEvent(ZENLOT_BOUND, 1, port), now);
    std::vector<std::uint16_t> ports;
    for (; !queue.isEmpty(); queue.dropPacket()) {
        const auto packet = decodeBindPacket(queue.nextPacket(0));
        for (const BindEvent& event : packet->events)
            ports.push_back(event.port);
    }
    EXPECT_EQ(ports.size(), 100U);
    EXPECT_TRUE(std::ranges::is_sorted(ports));
}

TEST(PeerQueueTest, WhatFindsNoRoomIsCountedAndASlowReaderGivenUp) {
    PeerQueue queue;
    PeerQueue::Time now{};
    for (std::size_t count = 0; count < PeerQueue::kMostEvents + 3; ++count)
        queue.push(bindEvent(ZENLOT_BOUND, 1, 1), now);
    EXPECT_EQ(queue.lost(), 3U);
    EXPECT_EQ(decodeBindPacket(queue.nextPacket(4))->lost, 7U);
    EXPECT_FALSE(queue.isGivenUp(now + PeerQueue::kLongestSilence - 1ms));
    queue.dropPacket(); // it takes something after all
    queue.dropPacket();
    EXPECT_FALSE(queue.isGivenUp(now + PeerQueue::kLongestSilence));
    for (std::size_t count = 0; count < PeerQueue::kMostEvents; ++count)
        queue.push(bindEvent(ZENLOT_BOUND, 1, 1), now);
    EXPECT_TRUE(queue.isGivenUp(now + PeerQueue::kLongestSilence));
}

} // namespace
} // namespace zenlot
