// The list of ports that the background monitor last published. Any thread may use it.
#pragma once

#include "inventory/occupied_port.h"

#include <memory>
#include <mutex>
#include <vector>

namespace zenlot {

class SharedPortCache {
  public:
    // Never null. Nobody holds the lock while working on the list: it is replaced, not changed.
    SharedPorts list() const;

    std::vector<OccupiedPort> copy() const { return *list(); }

    void replace(std::vector<OccupiedPort> ports);

  private:
    mutable std::mutex mutex_;
    SharedPorts ports_{std::make_shared<const std::vector<OccupiedPort>>()};
};

} // namespace zenlot
