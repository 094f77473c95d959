#include "inventory/port_lookup.h"

#include "inventory/port_merge.h"

#include <algorithm>

namespace zenlot {

std::vector<PortProcess> processesOnPort(const PortScanner& scanner, std::int64_t port,
                                         const std::vector<OccupiedPort>& published) {
    std::vector<OccupiedPort> fresh = scanner.scanListeningSockets(port);
    std::vector<PortProcess> processes;
    for (const OccupiedPort& record : mergeWithCache(std::move(fresh), published)) {
        // Every port was published.
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
        if (process.pid > 0)
            owners += process.displayName + " (PID " + std::to_string(process.pid) + ")";
        else
            owners += process.displayName.empty() ? "Unknown" : process.displayName;
    }
    return "Port " + std::to_string(port) + " is used by: " + owners;
}

} // namespace zenlot
