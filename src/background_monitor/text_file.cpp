#include "background_monitor/text_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <deque>
#include <utility>

namespace zenlot {

// It may have become another one since it was looked at, and a terminal may become the program's
// own.
FileDescriptor openedFile(const std::filesystem::path& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return {};
    return FileDescriptor(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

std::size_t readAt(const FileDescriptor& file, off_t place, char* start, std::size_t length) {
    std::size_t filled = 0;
    while (filled < length) {
        const ssize_t count = ::pread(file.get(), start + filled, length - filled,
                                      place + static_cast<off_t>(filled));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        filled += static_cast<std::size_t>(count);
    }
    return filled;
}

std::optional<off_t> sizeOfFile(const FileDescriptor& file, off_t largest) {
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode) ||
        status.st_size > largest || (status.st_uid != ::geteuid() && status.st_uid != 0))
        return std::nullopt;
    return status.st_size;
}

std::optional<std::string> readTextFile(const std::filesystem::path& path, off_t largest) {
    const FileDescriptor file = openedFile(path);
    const auto size = sizeOfFile(file, largest);
    if (!size)
        return std::nullopt;
    std::string text(static_cast<std::size_t>(*size), '\0');
    text.resize(readAt(file, 0, text.data(), text.size()));
    return text.find('\0') == std::string::npos ? std::optional(std::move(text)) : std::nullopt;
}

bool walkFiles(const std::filesystem::path& root, const WalkBounds& bounds,
               const std::function<bool(const std::string& folder)>& enters,
               const std::function<bool(const std::filesystem::directory_entry& file)>& call) {
    const auto hasTime = [&bounds] { return std::chrono::steady_clock::now() < bounds.deadline; };
    std::deque<std::pair<std::filesystem::path, int>> folders{{root, 0}};
    std::size_t entries = 0;
    while (!folders.empty() && hasTime()) {
        const auto [folder, depth] = std::move(folders.front());
        folders.pop_front();
        std::error_code error;
        for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
             entry.increment(error)) {
            if (++entries > bounds.entries || !hasTime())
                return false;
            std::error_code ignored;
            if (!entry->is_directory(ignored)) {
                if (!call(*entry))
                    return false;
            } else if (!entry->is_symlink(ignored) && depth < bounds.depth &&
                       enters(entry->path().filename().string())) {
                folders.emplace_back(entry->path(), depth + 1);
            }
        }
    }
    return folders.empty();
}

} // namespace zenlot
