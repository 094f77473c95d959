// Folds the ports of one application into a group, and sorts the groups by name.
#pragma once

#include "inventory/app_port_group.h"
#include "shell/mainwindow/application_cache.h"
#include "shell/mainwindow/bundle_key_cache.h"

#include <QString>

#include <vector>

namespace zenlot {

// What a group is called and sorted by.
QString groupDisplayName(const AppPortGroup& group);

// The groups of these ports in the order of their names in the current locale. Bundles with the
// same key become one group, and so do processes outside of bundles that are parts of one
// application; a port that stands in a group is not listed by itself as well. A running application
// knows its program better than the scan, which sees the helper at work: its path is taken.
// Reads property lists and asks about processes: not for the thread that draws.
std::vector<AppPortGroup> groupPorts(std::vector<OccupiedPort> ports, BundleKeyCache& bundleKeys,
                                     ApplicationCache& applications);

} // namespace zenlot
