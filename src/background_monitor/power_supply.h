// Whether the machine runs on its battery.
#pragma once

#include "background_monitor/poll_pace.h"

#include <string>

namespace zenlot {

// Mains when some supply of that kind is on line, or when there is no battery that discharges.
PollPace::Power powerNow(const std::string& folder = "/sys/class/power_supply");

} // namespace zenlot
