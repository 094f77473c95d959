// Answers who holds one port.
#pragma once

#include "inventory/port_process.h"
#include "inventory/port_scanner.h"
#include "inventory/shared_port_cache.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zenlot {

class PortLookup {
  public:
    // Both must outlive the lookup.
    PortLookup(const PortScanner& scanner, const SharedPortCache& sharedPortCache);

    // The processes that hold the port, from a fresh scan and what the background monitor last
    // published; empty when nobody does. Never fails. Blocks for the length of a scan.
    std::vector<PortProcess> processesOnPort(std::int64_t port) const;

  private:
    const PortScanner& scanner_;
    const SharedPortCache& sharedPortCache_;
};

// The one sentence that answers "what is using this port?". `processes` is what processesOnPort
// returned; a port outside 1 to 65535 gets a request for a valid one.
std::string checkPortAnswer(std::int64_t port, const std::vector<PortProcess>& processes);

} // namespace zenlot
