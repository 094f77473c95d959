#include "inventory/port_lookup.h"

#include "inventory/port_merge.h"

#include <algorithm>

namespace zenlot {

PortLookup::PortLookup(const PortScanner& scanner, const SharedPortCache& sharedPortCache)
    : scanner_(scanner), sharedPortCache_(sharedPortCache) {}

std::vector<PortProcess> PortLookup::processesOnPort(std::int64_t port) const {
    std::vector<OccupiedPort> fresh = scanner_.scanListeningSockets(port);
    std::vector<PortProcess> processes;
    for (const OccupiedPort& record : mergeWithCache(std::move(fresh), sharedPortCache_.copy())) {
        // The cache holds every port.
        if (record.port == port)
            processes.push_back(PortProcess::fromOccupiedPort(record));
    }
    return processes;
}

std::string checkPortAnswer(std::int64_t port, const std::vector<PortProcess>& processes) {
    if (!isValidPort(port))
        return "Please enter a valid port number between 1 and 65535.";
    if (processes.empty())
        return "Port " + std::to_string(port) + " is free — nothing is using it.";

    std::string owners;
    for (const PortProcess& process : processes) {
        if (!owners.empty())
            owners += ", ";
        owners += process.displayName + " (PID " + std::to_string(process.pid) + ")";
    }
    return "Port " + std::to_string(port) + " is used by: " + owners;
}

} // namespace zenlot
