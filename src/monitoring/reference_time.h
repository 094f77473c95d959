// Instants as the files of the background monitor hold them: seconds since 2001-01-01T00:00:00Z,
// as a double. Kept in that form they are written back as they were read.
//
//     ReferenceTime detected = fromReferenceSeconds(791120000.25);
//     bool isOld = toReferenceTime(std::chrono::system_clock::now()) - detected > 60s;
#pragma once

#include <algorithm>
#include <chrono>

namespace zenlot {

struct ReferenceClock {
    using rep = double;
    using period = std::ratio<1>;
    using duration = std::chrono::duration<rep, period>;
    using time_point = std::chrono::time_point<ReferenceClock>;
    // NOLINTNEXTLINE(readability-identifier-naming): what every clock has to call it
    static constexpr bool is_steady = false;

    static time_point now();
};

using ReferenceTime = ReferenceClock::time_point;

// 2001-01-01T00:00:00Z as system time, which counts from 1970.
inline constexpr std::chrono::sys_days kReferenceDate{std::chrono::January / 1 / 2001};

constexpr ReferenceTime fromReferenceSeconds(double seconds) {
    return ReferenceTime(ReferenceClock::duration(seconds));
}

constexpr ReferenceTime toReferenceTime(std::chrono::system_clock::time_point time) {
    return ReferenceTime(time - kReferenceDate);
}

// An instant that system time can't hold gives the nearest one that it can.
constexpr std::chrono::system_clock::time_point toSystemTime(ReferenceTime time) {
    using std::chrono::system_clock;
    // A whole second within the ends, because a double can't hold the ends themselves.
    constexpr auto kEarliest =
        std::chrono::ceil<std::chrono::seconds>(system_clock::time_point::min());
    constexpr auto kLatest =
        std::chrono::floor<std::chrono::seconds>(system_clock::time_point::max());
    constexpr ReferenceClock::duration kMin = kEarliest - kReferenceDate;
    constexpr ReferenceClock::duration kMax = kLatest - kReferenceDate;
    if (!(time.time_since_epoch() > kMin))
        return kEarliest;
    if (time.time_since_epoch() >= kMax)
        return kLatest;
    return kReferenceDate + std::chrono::round<system_clock::duration>(time.time_since_epoch());
}

inline ReferenceTime ReferenceClock::now() {
    return toReferenceTime(std::chrono::system_clock::now());
}

} // namespace zenlot
