#include "monitoring/port_inventory.h"

#include "inventory/port_merge.h"

#include <QtConcurrentRun>

namespace zenlot {

PortInventory::PortInventory(const PortScanner& scanner, const PortLookup& lookup,
                             const SharedPortCache& sharedPortCache, const ProcessPinner& processes)
    : scanner_(scanner), lookup_(lookup), sharedPortCache_(sharedPortCache), processes_(processes) {
}

QFuture<std::vector<OccupiedPort>> PortInventory::listMergedPorts() {
    return QtConcurrent::run(&workers_, [this] {
        std::vector<OccupiedPort> fresh = scanner_.listOccupiedPorts();
        return mergeWithCache(std::move(fresh), sharedPortCache_.copy());
    });
}

QFuture<std::vector<PortProcess>> PortInventory::processesOnPort(std::int64_t port) {
    return QtConcurrent::run(&workers_, [this, port] { return lookup_.processesOnPort(port); });
}

QFuture<bool> PortInventory::forceQuitProcess(std::int64_t pid) {
    return QtConcurrent::run(&workers_,
                             [this, pid] { return zenlot::forceQuitProcess(processes_, pid); });
}

} // namespace zenlot
