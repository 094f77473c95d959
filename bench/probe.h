// What the probes of windows measure with: the time, the memory, and how long the event loop of the
// main thread did not turn. Main thread only.
#pragma once

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <utility>

namespace zenlot {

using Milliseconds = std::chrono::duration<double, std::milli>;

inline constexpr std::chrono::seconds kPatience{30};

// Since this process was started. The kernel notes that moment in ticks, of which the beginning is
// taken: the answer is up to one tick, mostly 10 ms, too long.
inline Milliseconds age() {
    QFile file(QStringLiteral("/proc/self/stat"));
    if (!file.open(QIODevice::ReadOnly))
        return Milliseconds(0);
    const QByteArray stat = file.readAll();
    // The fields after the name start with the third; the 22nd is wanted.
    const double ticks = stat.mid(stat.lastIndexOf(')') + 2).split(' ').value(19).toDouble();
    timespec now{};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec) -
           std::chrono::duration<double>(ticks / static_cast<double>(sysconf(_SC_CLK_TCK)));
}

inline double proportionalMiB() {
    QFile file(QStringLiteral("/proc/self/smaps_rollup"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("Pss:"))
            return line.simplified().split(' ').value(1).toDouble() / 1024;
    }
    return 0;
}

inline Milliseconds threadTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

struct Gap {
    Milliseconds wall{0};
    Milliseconds computing{0}; // the rest of it the thread had to wait
};

// Beats every millisecond while the event loop turns, and knows the longest time without a beat.
class Heartbeat final {
  public:
    Heartbeat() {
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.callOnTimeout([this] { beat(); });
        timer_.start(std::chrono::milliseconds(1));
        sinceBeat_.start();
    }

    // The longest gap since the last call.
    Gap takeLongest() {
        beat();
        return std::exchange(longest_, Gap());
    }

  private:
    void beat() {
        const Milliseconds computing = threadTime();
        const Milliseconds gap = std::chrono::nanoseconds(sinceBeat_.nsecsElapsed());
        if (gap > longest_.wall)
            longest_ = {gap, computing - computingAtBeat_};
        computingAtBeat_ = computing;
        sinceBeat_.start();
    }

    QTimer timer_;
    QElapsedTimer sinceBeat_;
    Milliseconds computingAtBeat_{threadTime()};
    Gap longest_;
};

inline bool waitUntil(const std::function<bool()>& isReached) {
    // A loop of its own, because whatever is to be deleted later waits for a real one.
    const QDeadlineTimer patience(kPatience);
    QEventLoop loop;
    QTimer looks;
    looks.setTimerType(Qt::PreciseTimer);
    looks.callOnTimeout([&] {
        if (isReached() || patience.hasExpired())
            loop.quit();
    });
    looks.start(std::chrono::milliseconds(1));
    loop.exec();
    return isReached();
}

inline void turnFor(std::chrono::milliseconds time) {
    const QDeadlineTimer end(time);
    waitUntil([&] { return end.hasExpired(); });
}

// Prints figures, and remembers whether one was above its limit.
class Report final {
  public:
    void add(const char* what, double figure, const char* unit, double limit = 0) {
        std::printf("%-48s %8.1f %s", what, figure, unit);
        if (limit > 0)
            std::printf("  (at most %.0f)", limit);
        if (limit > 0 && figure > limit) {
            std::printf("  MISSED");
            isWithinLimits_ = false;
        }
        std::printf("\n");
        std::fflush(stdout);
    }

    void addGap(const char* what, const Gap& gap, double limit = 0) {
        add(what, gap.wall.count(), "ms", limit);
        add("    of it computing", gap.computing.count(), "ms");
    }

    bool isWithinLimits() const { return isWithinLimits_; }

  private:
    bool isWithinLimits_{true};
};

} // namespace zenlot
