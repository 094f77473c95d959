#include "background_monitor/port_publisher.h"

#include "inventory/occupied_ports_json.h"
#include "monitoring/broadcast_names.h"
#include "monitoring/shared_container.h"

#include <algorithm>

namespace zenlot {

PortPublisher::PortPublisher(const ContainerWriter& container, BroadcastCenter& broadcasts)
    : container_(container), broadcasts_(broadcasts) {}

bool PortPublisher::publish(const std::vector<OccupiedPort>& ports) {
    if (published_ == ports)
        return false;
    // A list that could not be written is tried again the next time.
    if (!container_.replace(std::string(kPortsFile), encodeOccupiedPorts(ports)))
        return false;
    published_ = ports;
    broadcasts_.post(kPortsUpdatedBroadcast);
    return true;
}

void PortPublisher::withdraw() {
    forget();
    publish({});
}

ProcessId PortPublisher::ownerOf(std::uint16_t port) const {
    const OccupiedPort* record = find(port);
    return record ? static_cast<ProcessId>(record->pid) : 0;
}

std::vector<ProcessId> PortPublisher::owners() const {
    std::vector<ProcessId> owners;
    for (const OccupiedPort& record : published_.value_or(std::vector<OccupiedPort>())) {
        if (record.pid != 0)
            owners.push_back(static_cast<ProcessId>(record.pid));
    }
    return owners;
}

const OccupiedPort* PortPublisher::find(std::uint16_t port) const {
    if (!published_)
        return nullptr;
    const auto found =
        std::ranges::lower_bound(*published_, std::int64_t{port}, {}, &OccupiedPort::port);
    return found != published_->end() && found->port == port ? &*found : nullptr;
}

} // namespace zenlot
