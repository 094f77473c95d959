#include "inventory/shared_port_cache.h"

#include <utility>

namespace zenlot {

SharedPortCache::SharedPortCache(MinderQuery isMinded) : isMinded_(std::move(isMinded)) {}

SharedPorts SharedPortCache::list() const {
    SharedPorts ports;
    {
        const std::lock_guard lock(mutex_);
        ports = ports_;
    }
    return ports->empty() || !isMinded_ || isMinded_() ? ports : nothing_;
}

void SharedPortCache::replace(std::vector<OccupiedPort> ports) {
    auto list = std::make_shared<const std::vector<OccupiedPort>>(std::move(ports));
    // The list that was there goes away after the lock.
    const std::lock_guard lock(mutex_);
    ports_.swap(list);
}

} // namespace zenlot
