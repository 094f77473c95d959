// Folds the ports of one application into a group, and sorts the groups by name.
#pragma once

#include "inventory/app_port_group.h"
#include "platform/running_applications.h"
#include "shell/mainwindow/bundle_key_cache.h"

#include <QString>

#include <vector>

namespace zenlot {

// What a group is called and sorted by.
QString groupDisplayName(const AppPortGroup& group);

// The groups of these ports in the order of their names in the current locale. Bundles with the
// same key become one group, and so do processes outside of bundles that are parts of one
// application; a port that stands in a group is not listed by itself as well.
// Reads property lists and asks about processes: not for the thread that draws.
std::vector<AppPortGroup> groupPorts(const std::vector<OccupiedPort>& ports,
                                     BundleKeyCache& bundleKeys,
                                     const RunningApplications& applications);

} // namespace zenlot
