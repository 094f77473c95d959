// Reads values out of raw bytes, wherever they lie.
#pragma once

#include <cassert>
#include <cstddef>
#include <cstring>
#include <span>
#include <type_traits>

namespace zenlot {

// The value whose bytes start at `offset`, which need not be aligned. The caller has made sure that
// they lie within `bytes`.
template <typename Value>
Value loadAt(std::span<const std::byte> bytes, std::size_t offset = 0) {
    static_assert(std::is_trivially_copyable_v<Value>);
    assert(offset <= bytes.size() && sizeof(Value) <= bytes.size() - offset);
    Value value;
    std::memcpy(&value, bytes.data() + offset, sizeof(Value));
    return value;
}

} // namespace zenlot
