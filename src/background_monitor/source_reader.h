// Finds the ports that an attempt's own files name: its script and the scripts that it loads from
// its own folder, its configuration, or the program that was built.
//
// Read only once there is evidence that the attempt could not have a port. Files are read as the
// user who owns them, in small number and up to a bound; nothing of them is kept.
#pragma once

#include "background_monitor/attempt.h"

#include <cstdint>
#include <span>
#include <vector>

namespace zenlot {

// The likeliest ones; see Machine::writtenPorts.
std::vector<std::uint16_t> portsInFilesOf(const Attempt& attempt,
                                          std::span<const std::uint16_t> held);

} // namespace zenlot
