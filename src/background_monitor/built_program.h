// Searches a program that was built for ports and words, as the linker left them.
#pragma once

#include "background_monitor/written_ports.h"
#include "posix/file_descriptor.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace zenlot {

// Longer words are not looked for.
inline constexpr std::size_t kLongestBuiltWord = 64;

struct FoundInProgram {
    std::vector<std::uint16_t> ports;
    std::set<std::string> words;
};

// Which of the given ports and words stand in the file; nothing of one above 64 MB, or of another
// user's.
FoundInProgram searchProgram(const FileDescriptor& file, BinaryKind kind,
                             std::span<const std::uint16_t> ports,
                             std::span<const std::string> words = {});

} // namespace zenlot
