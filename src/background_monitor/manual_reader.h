// Finds the port that an installed tool takes when nobody tells it another one, as far as what came
// with it says: its package's sources, its manual, its settings in /etc, the program itself.
//
// For tools of which no table knows anything. Only ports that are held are looked for, near words
// about listening, and variables that are set; what the user has written is asked before.
#pragma once

#include "background_monitor/attempt.h"
#include "background_monitor/port_question.h"

#include <chrono>
#include <cstdint>
#include <span>
#include <vector>

namespace zenlot {

// Answers from `environment`, where the package asks for a variable that is set, and `manual`.
std::vector<PortAnswer> answersInManual(const Attempt& attempt, std::span<const std::uint16_t> held,
                                        std::chrono::steady_clock::time_point deadline);

} // namespace zenlot
