#include "bindwatch/peer_queue.h"

#include <algorithm>

namespace zenlot {

void PeerQueue::push(const BindEvent& event, Time now) {
    if (events_.size() < kMostEvents) {
        events_.push_back(event);
        return;
    }
    ++lost_;
    if (!fullSince_)
        fullSince_ = now;
}

std::vector<std::byte> PeerQueue::nextPacket(std::uint64_t lostBefore) const {
    std::vector<BindEvent> next;
    if (isGreeted_) {
        const std::size_t count = std::min(events_.size(), kMostEventsOfPacket);
        next.assign(events_.begin(), events_.begin() + static_cast<std::ptrdiff_t>(count));
    }
    return encodeBindPacket(lostBefore + lost_, next);
}

void PeerQueue::dropPacket() {
    fullSince_.reset();
    if (!isGreeted_) {
        isGreeted_ = true;
        return;
    }
    const std::size_t count = std::min(events_.size(), kMostEventsOfPacket);
    events_.erase(events_.begin(), events_.begin() + static_cast<std::ptrdiff_t>(count));
}

bool PeerQueue::isGivenUp(Time now) const {
    return fullSince_ && now - *fullSince_ >= kLongestSilence;
}

} // namespace zenlot
