// Finds the port that an installed tool takes when nobody tells it another one, as far as what came
// with it says: its package's sources, its manual, its settings in /etc.
//
// For tools of which no table knows anything. Only ports that are held are looked for, near words
// about listening; what the user has written is asked before.
#pragma once

#include "background_monitor/attempt.h"

#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

namespace zenlot {

std::vector<std::uint16_t> portsInManual(const Attempt& attempt,
                                         std::span<const std::uint16_t> held,
                                         std::chrono::steady_clock::time_point deadline);

} // namespace zenlot
