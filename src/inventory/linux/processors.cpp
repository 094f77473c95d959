#include "inventory/linux/processors.h"

#include <sched.h>

#include <algorithm>
#include <thread>

namespace zenlot {

unsigned availableProcessors() {
    cpu_set_t processors;
    // Fails on machines with more processors than the set holds.
    if (::sched_getaffinity(0, sizeof processors, &processors) == 0)
        return static_cast<unsigned>(std::max(1, CPU_COUNT(&processors)));
    return std::max(1U, std::thread::hardware_concurrency());
}

} // namespace zenlot
