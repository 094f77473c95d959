// The list of ports that the background monitor last published. Any thread may use it.
#pragma once

#include "inventory/occupied_port.h"

#include <mutex>
#include <vector>

namespace zenlot {

class SharedPortCache {
  public:
    // A copy, so that nobody holds the lock while working on the list.
    std::vector<OccupiedPort> copy() const;

    void replace(std::vector<OccupiedPort> ports);

  private:
    mutable std::mutex mutex_;
    std::vector<OccupiedPort> ports_;
};

} // namespace zenlot
