// Finds the ports that an attempt's own files name: its sources and what they load, its settings,
// the files that add to its environment, the program that was built, and of the ports that are held
// those that its project mentions.
//
// Read only once there is evidence that the attempt could not have a port. Only regular files of
// the user or of the system are opened, never on a network, and in bounded number, size, depth and
// time; nothing of them is kept.
#pragma once

#include "background_monitor/attempt.h"
#include "background_monitor/port_question.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace zenlot {

using AddressQuestion = std::function<bool(const IpAddress& address)>;

// `held` are the ports about which it is asked whether built programs and the project mention them;
// `hasAddress` says whether an address is the machine's own. There is no answer for what would
// listen elsewhere.
std::vector<PortAnswer> answersInFilesOf(const Attempt& attempt,
                                         std::span<const std::uint16_t> held,
                                         const AddressQuestion& hasAddress);

// Whether the path lies on a file system that may keep whoever touches it waiting, by the mounts of
// a process as /proc/PID/mountinfo lists them.
bool liesOnNetwork(const std::string& path, std::string_view mountInfo);

} // namespace zenlot
