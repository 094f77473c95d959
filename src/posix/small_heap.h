// Keeps what the threads of a program take from the heap together.
#pragma once

#include <malloc.h>

namespace zenlot {

// To be called before there is a second thread. The C library gives each thread a part of the heap
// of its own, which keeps what a short piece of work has taken; with few threads that seldom ask
// for memory, two parts serve as well and take megabytes less.
inline void keepHeapSmall() {
    ::mallopt(M_ARENA_MAX, 2);
}

} // namespace zenlot
