// Instants as the files of the background monitor hold them: seconds since 2001-01-01T00:00:00Z,
// as a double. Kept in that form they are written back as they were read.
//
//     ReferenceTime detected = fromReferenceSeconds(791120000.25);
//     bool isOld = toReferenceTime(std::chrono::system_clock::now()) - detected > 60s;
#pragma once

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

inline ReferenceTime ReferenceClock::now() {
    return toReferenceTime(std::chrono::system_clock::now());
}

} // namespace zenlot
