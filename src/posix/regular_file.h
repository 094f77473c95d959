// Reads files of which anything may stand at their path by now.
#pragma once

#include "posix/file_descriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <optional>
#include <span>
#include <utility>

namespace zenlot {

struct RegularFile {
    FileDescriptor descriptor;
    struct stat status {};
};

// None when there is no such file, when it can't be read, or when it is no regular file.
inline std::optional<RegularFile> openRegularFile(const char* path) {
    // Without O_NONBLOCK, opening a FIFO would wait for a writer.
    RegularFile file{FileDescriptor(::open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY)),
                     {}};
    if (!file.descriptor || ::fstat(file.descriptor.get(), &file.status) != 0 ||
        !S_ISREG(file.status.st_mode))
        return std::nullopt;
    return file;
}

// As many bytes as there are, at most as many as there is room for; none on an error.
inline std::optional<std::size_t> readFully(const FileDescriptor& descriptor,
                                            std::span<char> buffer) {
    std::size_t filled = 0;
    while (filled < buffer.size()) {
        const ssize_t count =
            ::read(descriptor.get(), buffer.data() + filled, buffer.size() - filled);
        if (count == 0)
            break;
        if (count > 0)
            filled += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            return std::nullopt;
    }
    return filled;
}

} // namespace zenlot
