// What the targets share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

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

} // namespace zenlot::fuzzing
