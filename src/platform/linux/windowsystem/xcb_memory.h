// Owns what xcb hands out by malloc().
#pragma once

#include <cstdlib>
#include <memory>

namespace zenlot {

struct FreeXcbMemory {
    void operator()(void* memory) const { std::free(memory); }
};

template <typename Reply>
using XcbPointer = std::unique_ptr<Reply, FreeXcbMemory>;

} // namespace zenlot
