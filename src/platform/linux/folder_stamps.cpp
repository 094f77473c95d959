#include "platform/linux/folder_stamps.h"

#include <QFile>

#include <sys/stat.h>

#include <algorithm>

namespace zenlot {
namespace {

bool areEqual(const timespec& left, const timespec& right) {
    return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

} // namespace

FolderStamps::Stamp FolderStamps::stampOf(const QString& folder) {
    struct stat status {};
    if (::stat(QFile::encodeName(folder).constData(), &status) != 0)
        return {folder, 0, 0, {}};
    return {folder, status.st_dev, status.st_ino, status.st_mtim};
}

void FolderStamps::add(const QString& folder) {
    // The clock from which file systems take their times.
    timespec now{};
    ::clock_gettime(CLOCK_REALTIME_COARSE, &now);
    stamps_.push_back(stampOf(folder));
    isAmbiguous_ = isAmbiguous_ || areEqual(stamps_.back().modified, now);
}

bool FolderStamps::areCurrent() const {
    return !isAmbiguous_ && std::ranges::all_of(stamps_, [](const Stamp& stamp) {
        const Stamp now = stampOf(stamp.folder);
        return now.device == stamp.device && now.inode == stamp.inode &&
               areEqual(now.modified, stamp.modified);
    });
}

} // namespace zenlot
