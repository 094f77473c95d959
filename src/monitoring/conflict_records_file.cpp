#include "monitoring/conflict_records_file.h"

#include <sys/stat.h>

#include <string>
#include <utility>

namespace zenlot {
namespace {

std::chrono::nanoseconds toDuration(const timespec& time) {
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

ConflictRecordsFile::ConflictRecordsFile(SharedContainer container, std::chrono::seconds settleTime)
    : container_(std::move(container)), settleTime_(settleTime) {}

std::optional<ConflictRecordsFile::Version>
ConflictRecordsFile::versionOf(const std::optional<std::filesystem::path>& file) {
    struct stat status {};
    if (!file || ::stat(file->c_str(), &status) != 0)
        return std::nullopt;
    return Version{status.st_dev, status.st_ino, status.st_size, toDuration(status.st_mtim),
                   toDuration(status.st_ctim)};
}

const ConflictRecordsFile::Records& ConflictRecordsFile::read() {
    // In this order: whatever changes after any of these steps shows as a newer version next time.
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const std::optional<std::filesystem::path> file = container_.conflictsFileURL();
    const std::optional<Version> version = versionOf(file);
    if (version && version == version_)
        return records_;
    const std::optional<std::string> text = SharedContainer::read(file);
    records_ = text ? decodeConflictRecords(*text) : std::nullopt;
    // A failure to read may pass without a trace in the file.
    const bool isReliable = text && version && now - version->changed > settleTime_;
    version_ = isReliable ? version : std::nullopt;
    return records_;
}

} // namespace zenlot
