// Opens and reads files of others with care: only regular ones, since opening a device may do
// something, of the user or of the system, never larger than said, and never waiting for a writer.
#pragma once

#include "posix/file_descriptor.h"

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace zenlot {

// Empty for everything but a regular file.
FileDescriptor openedFile(const std::filesystem::path& path);

// Up to `length` bytes from that place on; fewer at the end of the file.
std::size_t readAt(const FileDescriptor& file, off_t place, char* start, std::size_t length);

// The size of a regular file of the user or the system; none for other things and larger ones.
std::optional<off_t> sizeOfFile(const FileDescriptor& file, off_t largest);

// None as well for what holds a zero, which is no text.
std::optional<std::string> readTextFile(const std::filesystem::path& path, off_t largest);

struct WalkBounds {
    std::size_t entries;
    int depth;
    std::chrono::steady_clock::time_point deadline;
};

// Calls back with everything below the folder but folders, the nearest first, until the call
// returns false. Folders are entered where `enters` says so by their name, and never through a
// link. False where it did not get to the end.
bool walkFiles(const std::filesystem::path& root, const WalkBounds& bounds,
               const std::function<bool(const std::string& folder)>& enters,
               const std::function<bool(const std::filesystem::directory_entry& file)>& call);

} // namespace zenlot
