#include "monitoring/shared_container.h"

#include "inventory/record_json.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <system_error>

namespace zenlot {
namespace {

// What the descriptor yields, up to the limit; none on an error.
std::optional<std::string> readUpTo(int descriptor, std::size_t limit) {
    std::string content(limit, '\0');
    std::size_t filled = 0;
    while (filled < limit) {
        const ssize_t count = ::read(descriptor, content.data() + filled, limit - filled);
        if (count == 0)
            break;
        if (count > 0)
            filled += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            return std::nullopt;
    }
    content.resize(filled);
    return content;
}

std::optional<std::string> readRegularFile(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const auto size = static_cast<std::uintmax_t>(status.st_size);
    if (size > kMaxJsonBytes)
        return std::nullopt;
    // One byte more than there should be shows a file that is still growing.
    std::optional<std::string> content = readUpTo(descriptor, static_cast<std::size_t>(size) + 1);
    if (content && content->size() != size)
        return std::nullopt;
    return content;
}

} // namespace

SharedContainer::SharedContainer(const QString& stateHome)
    : stateHome_(QFile::encodeName(stateHome).toStdString()) {}

std::optional<std::filesystem::path> SharedContainer::containerURL() const {
    if (!stateHome_.is_absolute())
        return std::nullopt;
    std::filesystem::path container = stateHome_ / kContainerFolder;
    std::error_code error;
    if (!std::filesystem::is_directory(container, error))
        return std::nullopt;
    return container;
}

std::optional<std::filesystem::path> SharedContainer::portsFileURL() const {
    return fileURL(kPortsFile);
}

std::optional<std::filesystem::path> SharedContainer::conflictsFileURL() const {
    return fileURL(kConflictsFile);
}

std::optional<std::filesystem::path> SharedContainer::conflictFileURL(std::int64_t port) const {
    return fileURL("conflict-" + std::to_string(port) + ".json");
}

std::optional<std::filesystem::path> SharedContainer::lockFileURL() const {
    return fileURL(kMonitorLockFile);
}

std::optional<std::string> SharedContainer::read(const std::optional<std::filesystem::path>& file) {
    if (!file)
        return std::nullopt;
    // O_NONBLOCK: opening a pipe would otherwise wait for its writer.
    const int descriptor = ::open(file->c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY);
    if (descriptor < 0)
        return std::nullopt;
    std::optional<std::string> content = readRegularFile(descriptor);
    ::close(descriptor);
    return content;
}

std::optional<std::filesystem::path> SharedContainer::fileURL(std::string_view name) const {
    std::optional<std::filesystem::path> container = containerURL();
    if (container)
        *container /= name;
    return container;
}

} // namespace zenlot
