// What the targets share.
#pragma once

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// Where something should hold whatever the input is: its failure is a find.
#define ZENLOT_EXPECT(condition)                                                                   \
    do {                                                                                           \
        if (!(condition)) {                                                                        \
            std::fprintf(stderr, "%s:%d: not true: %s\n", __FILE__, __LINE__, #condition);         \
            std::abort();                                                                          \
        }                                                                                          \
    } while (false)

namespace zenlot::fuzzing {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size}; // NOLINT: bytes as they came
}

inline std::span<const std::byte> bytesOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const std::byte*>(data), size}; // NOLINT: bytes as they came
}

// What stands between the separators.
inline std::vector<std::string> pieces(std::string_view text, char separator) {
    std::vector<std::string> found;
    for (;;) {
        const std::size_t end = text.find(separator);
        found.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return found;
        text.remove_prefix(end + 1);
    }
}

// A file in memory, for those who read files only.
class MemoryFile {
  public:
    MemoryFile() : descriptor_(::memfd_create("fuzz", MFD_CLOEXEC)) {}
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    ~MemoryFile() { ::close(descriptor_); }

    void set(std::string_view content) {
        ZENLOT_EXPECT(::ftruncate(descriptor_, 0) == 0);
        ZENLOT_EXPECT(::lseek(descriptor_, 0, SEEK_SET) == 0);
        append(content);
    }
    void append(std::string_view content) {
        ZENLOT_EXPECT(::write(descriptor_, content.data(), content.size()) ==
                      static_cast<ssize_t>(content.size()));
    }

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

  private:
    int descriptor_;
};

} // namespace zenlot::fuzzing
