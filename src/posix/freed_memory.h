// What a program has freed, and the C library keeps for the next time.
#pragma once

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace zenlot {

// Gives it back to the system, for after something that took much for a moment. Takes a millisecond
// or two.
inline void returnFreedMemory() {
#ifdef __GLIBC__
    ::malloc_trim(0);
#endif
}

} // namespace zenlot
