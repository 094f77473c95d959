// What one reader has still to be told. Bounded: what finds no room is counted, and a reader that
// takes nothing for long while there is no room is one to be given up. Pure.
#pragma once

#include "bindwatch/bind_stream.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

namespace zenlot {

class PeerQueue {
  public:
    using Time = std::chrono::steady_clock::time_point;

    static constexpr std::size_t kMostEvents = 4096;
    static constexpr std::chrono::seconds kLongestSilence{10};

    // Begins with the packet that greets.
    PeerQueue() = default;

    void push(const BindEvent& event, Time now);

    bool isEmpty() const { return isGreeted_ && events_.empty(); }

    // What to send next; `lostBefore` are the events that did not get as far as here.
    std::vector<std::byte> nextPacket(std::uint64_t lostBefore) const;

    // The reader has taken that packet.
    void dropPacket();

    std::uint64_t lost() const { return lost_; }

    bool isGivenUp(Time now) const;

  private:
    std::deque<BindEvent> events_;
    std::uint64_t lost_{0};
    bool isGreeted_{false};
    std::optional<Time> fullSince_;
};

} // namespace zenlot
