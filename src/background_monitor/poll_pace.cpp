#include "background_monitor/poll_pace.h"

#include <algorithm>

namespace zenlot {
namespace {

// Twenty seconds at the fastest pace, then forty at half of it.
constexpr int kPollsUntilSlower = 10;

} // namespace

std::chrono::milliseconds PollPace::next(Power power) {
    const int halvings = std::min(2, quietPolls_ / kPollsUntilSlower);
    if (quietPolls_ < 2 * kPollsUntilSlower)
        ++quietPolls_;
    const std::chrono::milliseconds pause = kFastest * (1 << halvings);
    return std::min(kSlowest, power == Power::battery ? pause * 2 : pause);
}

} // namespace zenlot
