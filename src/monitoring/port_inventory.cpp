#include "monitoring/port_inventory.h"

#include "inventory/port_merge.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace zenlot {

PortInventory::PortInventory(const PortScanner& scanner, const SharedPortCache& sharedPortCache,
                             const ProcessPinner& processes, const PortServices* services,
                             const OriginCollector* origins)
    : scanner_(scanner), sharedPortCache_(sharedPortCache), processes_(processes),
      services_(services), origins_(origins), repeatedScan_(scanner) {}

QFuture<std::vector<OccupiedPort>> PortInventory::listMergedPorts() {
    return workers_.run([this] {
        const PolledPorts poll = repeatedScan_.poll();
        const bool isProbing = poll.ports->empty() && !poll.silentFamilies.empty();
        return mergeWithCache(isProbing ? scanner_.listOccupiedPorts() : *poll.ports,
                              sharedPortCache_.copy());
    });
}

QFuture<SharedPorts> PortInventory::pollPortsOfCurrentUser() {
    return workers_.run([this] { return portsOfCurrentUser(); });
}

SharedPorts PortInventory::portsOfCurrentUser() {
    const PolledPorts poll = repeatedScan_.poll();
    const SharedPorts& scanned = poll.ports;
    const SharedPorts published = sharedPortCache_.list();
    // What probing would find may change while the list stays empty.
    const bool isProbing = scanned->empty() && !poll.silentFamilies.empty();
    if (!isProbing) {
        const std::lock_guard lock(lastPollMutex_);
        if (lastPoll_.scanned == scanned && lastPoll_.published == published)
            return lastPoll_.ofCurrentUser;
    }

    std::vector<OccupiedPort> merged = mergeWithCache(
        isProbing ? probePublishedPorts(*published, poll.silentFamilies) : *scanned, *published);
    const UserId currentUser = currentUserId();
    std::erase_if(merged, [currentUser](const OccupiedPort& record) {
        return !record.isCurrentUser(currentUser);
    });
    SharedPorts ports = std::make_shared<const std::vector<OccupiedPort>>(std::move(merged));
    const std::lock_guard lock(lastPollMutex_);
    lastPoll_ = {scanned, published, ports};
    return ports;
}

// Ports that are found by binding have no owner. Of the current user's ports they can only change
// what becomes of published ones, so it would be a waste to probe the others.
std::vector<OccupiedPort>
PortInventory::probePublishedPorts(const std::vector<OccupiedPort>& published,
                                   const std::vector<AddressFamily>& families) const {
    std::set<std::int64_t> ports;
    for (const OccupiedPort& record : published)
        ports.insert(record.port);
    std::vector<OccupiedPort> found;
    for (const std::int64_t port : ports)
        std::ranges::move(scanner_.probePortsByBinding(port, families), std::back_inserter(found));
    return found;
}

QFuture<std::vector<PortProcess>> PortInventory::processesOnPort(std::int64_t port) {
    return workers_.run([this, port] {
        std::vector<PortProcess> rows =
            zenlot::processesOnPort(scanner_, port, *sharedPortCache_.list());
        for (PortProcess& row : rows) {
            const ProcessSighting seen = lookAtProcess(processes_, row.target());
            row.startTime = seen.process.startTime;
            row.obstacle = seen.obstacle;
            if (services_ && row.obstacle != ForceQuitObstacle::none)
                row.service = services_->serviceOnPort(static_cast<std::uint16_t>(port));
        }
        return rows;
    });
}

QFuture<std::vector<BindObstacle>> PortInventory::obstaclesOnPort(std::uint16_t port) {
    return workers_.run([this, port] {
        return origins_ ? origins_->obstaclesOnPort(port) : std::vector<BindObstacle>();
    });
}

QFuture<std::vector<ProcessSighting>>
PortInventory::lookAtProcesses(std::vector<ForceQuitTarget> targets) {
    return workers_.run([this, targets = std::move(targets)] {
        std::vector<ProcessSighting> sightings;
        sightings.reserve(targets.size());
        for (const ForceQuitTarget& target : targets)
            sightings.push_back(lookAtProcess(processes_, target));
        return sightings;
    });
}

QFuture<bool> PortInventory::forceQuitProcess(const ForceQuitTarget& target) {
    return workers_.run([this, target] { return zenlot::forceQuitProcess(processes_, target); });
}

} // namespace zenlot
