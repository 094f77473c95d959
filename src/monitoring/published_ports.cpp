#include "monitoring/published_ports.h"

#include "inventory/occupied_ports_json.h"
#include "posix/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <ctime>
#include <string>

namespace zenlot {
namespace {

enum class Lock : std::uint8_t { missing, held, released, unknown };

// Asked without taking it, so that a monitor which starts at this moment is not locked out.
Lock askLock(const std::filesystem::path& path) {
    const FileDescriptor file(
        ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY | O_NOFOLLOW));
    if (!file)
        return errno == ENOENT ? Lock::missing : Lock::unknown;
    struct flock question {};
    question.l_type = F_RDLCK;
    question.l_whence = SEEK_SET;
    if (::fcntl(file.get(), F_OFD_GETLK, &question) != 0)
        return Lock::unknown;
    return question.l_type == F_UNLCK ? Lock::released : Lock::held;
}

std::chrono::nanoseconds timeOf(clockid_t clock) {
    timespec now{};
    ::clock_gettime(clock, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

bool isOlderThanTheMachineRuns(const std::filesystem::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0)
        return true;
    const std::chrono::nanoseconds written = std::chrono::seconds(status.st_mtim.tv_sec) +
                                             std::chrono::nanoseconds(status.st_mtim.tv_nsec);
    return written < timeOf(CLOCK_REALTIME) - timeOf(CLOCK_BOOTTIME);
}

} // namespace

bool isPortListMinded(const SharedContainer& container) {
    const auto lock = container.lockFileURL();
    const auto ports = container.portsFileURL();
    if (!lock || !ports)
        return false;
    switch (askLock(*lock)) {
    case Lock::held:
        return true;
    case Lock::released:
        return false;
    case Lock::missing:
    case Lock::unknown:
        break;
    }
    return !isOlderThanTheMachineRuns(*ports);
}

std::optional<std::vector<OccupiedPort>> readPublishedPorts(const SharedContainer& container) {
    const std::optional<std::string> text = SharedContainer::read(container.portsFileURL());
    if (text && !isPortListMinded(container))
        return std::vector<OccupiedPort>();
    return text ? decodeOccupiedPorts(*text) : std::nullopt;
}

} // namespace zenlot
