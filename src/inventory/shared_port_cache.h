// The list of ports that the background monitor last published, for as long as it can be true: it
// is empty while nobody minds it, and comes back when somebody does. Any thread may use it.
#pragma once

#include "inventory/occupied_port.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace zenlot {

class SharedPortCache {
  public:
    // Whether somebody minds the list, asked at each use on the thread that uses it. Without the
    // question the list is always minded.
    using MinderQuery = std::function<bool()>;

    explicit SharedPortCache(MinderQuery isMinded = {});

    // Never null. Nobody holds the lock while working on the list: it is replaced, not changed.
    SharedPorts list() const;

    std::vector<OccupiedPort> copy() const { return *list(); }

    void replace(std::vector<OccupiedPort> ports);

  private:
    MinderQuery isMinded_;
    const SharedPorts nothing_{std::make_shared<const std::vector<OccupiedPort>>()};
    mutable std::mutex mutex_;
    SharedPorts ports_{nothing_};
};

} // namespace zenlot
