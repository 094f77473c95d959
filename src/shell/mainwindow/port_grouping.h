// Folds the ports of one application into a group, and sorts the groups by name.
#pragma once

#include "inventory/app_port_group.h"
#include "shell/mainwindow/bundle_key_cache.h"

#include <QString>

#include <vector>

namespace zenlot {

// What a group is called and sorted by.
QString groupDisplayName(const AppPortGroup& group);

// The groups of these ports in the order of their names in the current locale. Bundles with the
// same key become one group; a port that stands in a group is not listed by itself as well.
// Reads property lists: not for the thread that draws.
std::vector<AppPortGroup> groupPorts(const std::vector<OccupiedPort>& ports,
                                     BundleKeyCache& bundleKeys);

} // namespace zenlot
