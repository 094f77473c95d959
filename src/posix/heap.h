// How much of the memory that a process has done with it gives back.
#pragma once

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace zenlot {

// For a program that waits most of its time. To be called before there are threads: each of them
// would keep a heap, and what it once used of it.
inline void keepHeapSmall() {
#ifdef __GLIBC__
    mallopt(M_ARENA_MAX, 1);
    // The library's own values, which otherwise grow with the largest block that was ever freed.
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    mallopt(M_TRIM_THRESHOLD, 128 * 1024);
#endif
}

} // namespace zenlot
