#include "background_monitor/instance_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <utility>

namespace zenlot {
namespace {

bool isRefused(int result) {
    return result != 0 && (errno == EWOULDBLOCK || errno == EAGAIN || errno == EACCES);
}

bool lock(const FileDescriptor& file, InstanceLock::Patience patience) {
    const bool waits = patience == InstanceLock::Patience::endless;
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    return !isRefused(::flock(file.get(), waits ? LOCK_EX : LOCK_EX | LOCK_NB)) &&
           !isRefused(::fcntl(file.get(), waits ? F_OFD_SETLKW : F_OFD_SETLK, &whole));
}

} // namespace

InstanceLock::InstanceLock(std::string path, Patience patience)
    : path_(std::move(path)),
      file_(::open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR)),
      isOurs_(!file_ || lock(file_, patience)) {}

bool InstanceLock::isInPlace() const {
    struct stat held {};
    struct stat there {};
    return file_ && ::fstat(file_.get(), &held) == 0 && ::lstat(path_.c_str(), &there) == 0 &&
           held.st_dev == there.st_dev && held.st_ino == there.st_ino;
}

} // namespace zenlot
