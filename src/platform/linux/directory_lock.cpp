#include "platform/linux/directory_lock.h"

#include <QDeadlineTimer>
#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <thread>

namespace zenlot {
namespace {

constexpr std::chrono::seconds kPatience{2};
constexpr std::chrono::milliseconds kPause{1};

} // namespace

DirectoryLock::DirectoryLock(const QString& directory)
    : descriptor_(
          ::open(QFile::encodeName(directory).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    const QDeadlineTimer deadline(kPatience);
    while (descriptor_ >= 0 && ::flock(descriptor_, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || deadline.hasExpired())
            break;
        std::this_thread::sleep_for(kPause);
    }
}

DirectoryLock::~DirectoryLock() {
    if (descriptor_ >= 0)
        ::close(descriptor_);
}

} // namespace zenlot
