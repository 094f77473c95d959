// Publishes conflicts: the recent ones in "conflicts.json", newest last; each in the file of its
// port; a broadcast for both; and a line in the log. Nothing in them comes from the command line or
// the environment of a process.
#pragma once

#include "background_monitor/attempt_tracker.h"
#include "background_monitor/container_writer.h"
#include "monitoring/conflict_record.h"
#include "platform/broadcast_center.h"
#include "settings/app_log.h"

#include <cstddef>
#include <functional>
#include <vector>

namespace zenlot {

class ConflictPublisher {
  public:
    static constexpr std::size_t kMostRecords = 32;

    using Clock = std::function<ReferenceTime()>;

    // The references must outlive the publisher. Goes on with the records that are in the file, but
    // not with those of the future: a clock that was set back would keep them for long.
    ConflictPublisher(const ContainerWriter& container, BroadcastCenter& broadcasts, AppLog& log,
                      Clock clock = ReferenceClock::now);

    // Nothing is announced that could not be written; what could not be is kept.
    void publish(const Verdict& verdict);

    // Writes the files once more, where they have gone.
    void restore();

    // Tries again with what could not be written so far.
    void publishUnwritten();

  private:
    bool write(const ConflictRecord& record);

    const ContainerWriter& container_;
    BroadcastCenter& broadcasts_;
    AppLog& log_;
    Clock clock_;
    std::vector<ConflictRecord> records_;
    std::vector<ConflictRecord> unwritten_; // the newest are among the records
};

} // namespace zenlot
