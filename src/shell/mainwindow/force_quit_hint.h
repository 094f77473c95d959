// Why a process can't be force-quit, and what the user can do instead.
#pragma once

#include "inventory/port_process.h"

#include <QString>

namespace zenlot {

// Empty when there is no obstacle.
QString forceQuitHint(const PortProcess& process);

} // namespace zenlot
