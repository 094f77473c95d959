// The list of ports that the background monitor publishes in the shared container, as far as it can
// still be true.
//
// A list is true as long as its monitor minds it. The monitor holds a lock while it does, and
// withdraws the list when it ends in order; when it is killed its lock goes with it. So a lock that
// is there and free says that the list is nobody's. Lists of writers without a lock are taken at
// their word, unless they are from before the start of the machine.
//
// Any thread may ask. It costs a few system calls and waits for nobody.
#pragma once

#include "inventory/occupied_port.h"
#include "monitoring/shared_container.h"

#include <optional>
#include <vector>

namespace zenlot {

bool isPortListMinded(const SharedContainer& container);

// What the list says now: nothing while nobody minds it. None when there is no list, or when it
// can't be read whole.
std::optional<std::vector<OccupiedPort>> readPublishedPorts(const SharedContainer& container);

} // namespace zenlot
