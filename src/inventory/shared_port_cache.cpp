#include "inventory/shared_port_cache.h"

#include <utility>

namespace zenlot {

SharedPorts SharedPortCache::list() const {
    const std::lock_guard lock(mutex_);
    return ports_;
}

void SharedPortCache::replace(std::vector<OccupiedPort> ports) {
    auto list = std::make_shared<const std::vector<OccupiedPort>>(std::move(ports));
    // The list that was there goes away after the lock.
    const std::lock_guard lock(mutex_);
    ports_.swap(list);
}

} // namespace zenlot
