// The list of conflicts that the background monitor publishes, for somebody who looks at it again
// and again: a file that has not changed is neither read nor decoded anew.
//
// A file counts as unchanged when its identity, its size and its times are those of the last
// reading, and when it had been left alone for kSettleTime by then: a change within the resolution
// of the file system's clock could otherwise hide behind the same times.
//
// Any one thread at a time may use it; each reading waits for the disk. Nothing fails: see
// SharedContainer::read and decodeConflictRecords for what counts as no list.
//
//     ConflictRecordsFile file(container);
//     if (const auto& records = file.read()) ...
#pragma once

#include "monitoring/conflict_record.h"
#include "monitoring/shared_container.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

namespace zenlot {

class ConflictRecordsFile {
  public:
    // More than the coarsest clock of a file system that is in use.
    static constexpr std::chrono::seconds kSettleTime{3};

    using Records = std::optional<std::vector<ConflictRecord>>;

    explicit ConflictRecordsFile(SharedContainer container,
                                 std::chrono::seconds settleTime = kSettleTime);

    // The records of the file as it is now, none when there is no readable list. They stay valid
    // until the next call.
    const Records& read();

  private:
    struct Version {
        std::uint64_t device{0};
        std::uint64_t inode{0};
        std::int64_t size{0};
        std::chrono::nanoseconds modified{0}; // both since 1970
        std::chrono::nanoseconds changed{0};

        friend bool operator==(const Version&, const Version&) = default;
    };

    static std::optional<Version> versionOf(const std::optional<std::filesystem::path>& file);

    SharedContainer container_;
    std::chrono::seconds settleTime_;
    std::optional<Version> version_; // of the file that records_ hold, where it can be relied on
    Records records_;
};

} // namespace zenlot
