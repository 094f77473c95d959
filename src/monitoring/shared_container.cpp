#include "monitoring/shared_container.h"

#include "inventory/record_json.h"
#include "posix/regular_file.h"

#include <QFile>

#include <system_error>

namespace zenlot {

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
    const std::optional<RegularFile> opened = openRegularFile(file->c_str());
    if (!opened || static_cast<std::uintmax_t>(opened->status.st_size) > kMaxJsonBytes)
        return std::nullopt;
    // One byte more than there should be shows a file that is still growing.
    const auto size = static_cast<std::size_t>(opened->status.st_size);
    std::string content(size + 1, '\0');
    if (readFully(opened->descriptor, content) != size)
        return std::nullopt;
    content.pop_back();
    return content;
}

std::optional<std::filesystem::path> SharedContainer::fileURL(std::string_view name) const {
    std::optional<std::filesystem::path> container = containerURL();
    if (container)
        *container /= name;
    return container;
}

} // namespace zenlot
