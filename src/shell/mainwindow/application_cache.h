// Which application the owner of a port is, or is a part of. A process is asked about once and then
// again after a while: soon for one that was not known before, since desktops move a process into
// the unit of its application after it has begun, later for the others.
//
// Reads /proc; any thread may ask, but not the one that draws.
#pragma once

#include "inventory/occupied_port.h"
#include "platform/running_applications.h"

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <tuple>

namespace zenlot {

class ApplicationCache {
  public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    struct Answer {
        std::optional<std::string> executablePath; // of a process that is an application
        std::optional<OwningApplication> owner;
    };

    // `applications` must outlive the cache.
    explicit ApplicationCache(const RunningApplications& applications,
                              Clock clock = std::chrono::steady_clock::now);

    // Nothing for a port without a known owner.
    Answer of(const OccupiedPort& port);

    // Drops what nobody has asked for lately.
    void forgetOld();

  private:
    // A process may run another program than the one that it began with.
    using Process = std::tuple<std::int64_t, std::optional<std::int64_t>, std::string>;
    struct Entry {
        Answer answer;
        std::chrono::steady_clock::time_point endsAt;
    };

    const RunningApplications& applications_;
    Clock clock_;
    std::mutex mutex_;
    std::map<Process, Entry> entries_;
};

} // namespace zenlot
