#include "inventory/shared_port_cache.h"

namespace zenlot {

std::vector<OccupiedPort> SharedPortCache::copy() const {
    const std::lock_guard lock(mutex_);
    return ports_;
}

void SharedPortCache::replace(std::vector<OccupiedPort> ports) {
    // The list that was there goes away with the parameter, after the lock.
    const std::lock_guard lock(mutex_);
    ports_.swap(ports);
}

} // namespace zenlot
