#include "background_monitor/poll_pace.h"

#include <algorithm>

namespace zenlot {
namespace {

// A minute at the fastest pace, then two minutes at half of it.
constexpr int kPollsUntilSlower = 30;

} // namespace

std::chrono::milliseconds PollPace::next(Power power) {
    const int halvings = std::min(2, quietPolls_ / kPollsUntilSlower);
    if (quietPolls_ < 2 * kPollsUntilSlower)
        ++quietPolls_;
    const std::chrono::milliseconds pause = kFastest * (1 << halvings);
    return std::min(kSlowest, power == Power::battery ? pause * 2 : pause);
}

} // namespace zenlot
