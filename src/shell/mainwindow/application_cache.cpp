#include "shell/mainwindow/application_cache.h"

#include <utility>

namespace zenlot {
namespace {

using namespace std::chrono_literals;

constexpr auto kSettlingTime = 2s;
constexpr auto kKeptFor = 60s;

} // namespace

ApplicationCache::ApplicationCache(const RunningApplications& applications, Clock clock)
    : applications_(applications), clock_(std::move(clock)) {}

ApplicationCache::Answer ApplicationCache::of(const OccupiedPort& port) {
    if (port.pid == 0)
        return {};
    const Process process(port.pid, port.startTime, port.executablePath);
    const auto now = clock_();
    bool isKnown = false;
    {
        const std::lock_guard lock(mutex_);
        if (const auto found = entries_.find(process); found != entries_.end()) {
            isKnown = true;
            if (now < found->second.endsAt)
                return found->second.answer;
        }
    }
    Answer answer;
    if (const auto application = applications_.applicationWithPid(port.pid);
        application && application->executablePath)
        answer.executablePath = application->executablePath->toStdString();
    answer.owner = applications_.applicationOwning(port.pid);
    // Without the time of its start, another process may have its number next time.
    if (port.startTime) {
        const std::lock_guard lock(mutex_);
        entries_.insert_or_assign(process,
                                  Entry{answer, now + (isKnown ? kKeptFor : kSettlingTime)});
    }
    return answer;
}

void ApplicationCache::forgetOld() {
    const auto now = clock_();
    const std::lock_guard lock(mutex_);
    std::erase_if(entries_,
                  [now](const auto& entry) { return now - entry.second.endsAt >= kKeptFor; });
}

} // namespace zenlot
