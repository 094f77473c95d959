// Combines a fresh scan with the list that the background monitor published.
#pragma once

#include "inventory/occupied_port.h"

#include <vector>

namespace zenlot {

// How much a record says about its owner, from 0 to 11.
int recordRichness(const OccupiedPort& record);

// The fresh records, each replaced by the first cached record of its port that says strictly more,
// then the cached ports that the scan did not see, in ascending order of port. When one of the
// lists is empty the other comes back as it is.
std::vector<OccupiedPort> mergeWithCache(std::vector<OccupiedPort> fresh,
                                         std::vector<OccupiedPort> cached);

} // namespace zenlot
