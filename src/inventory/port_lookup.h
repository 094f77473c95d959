// Answers who holds one port.
#pragma once

#include "inventory/port_process.h"
#include "inventory/port_scanner.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zenlot {

// The processes that hold the port, from a fresh scan and what the background monitor last
// published; empty when nobody does. Never fails. Blocks for the length of a scan.
std::vector<PortProcess> processesOnPort(const PortScanner& scanner, std::int64_t port,
                                         const std::vector<OccupiedPort>& published = {});

// The one sentence that answers "what is using this port?". `processes` is what processesOnPort
// returned; a port outside 1 to 65535 gets a request for a valid one.
std::string checkPortAnswer(std::int64_t port, const std::vector<PortProcess>& processes);

} // namespace zenlot
