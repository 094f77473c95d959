// How long to wait until the next poll: two seconds while something happens, longer and longer
// while nothing does, and longer on battery. Pure.
#pragma once

#include <chrono>
#include <cstdint>

namespace zenlot {

class PollPace {
  public:
    static constexpr std::chrono::milliseconds kFastest{2000};
    static constexpr std::chrono::milliseconds kSlowest{8000};

    enum class Power : std::uint8_t { mains, battery };

    // What has happened counts as something happening now.
    void noteChange() { quietPolls_ = 0; }

    // To be called after each poll.
    std::chrono::milliseconds next(Power power);

  private:
    int quietPolls_{0};
};

} // namespace zenlot
