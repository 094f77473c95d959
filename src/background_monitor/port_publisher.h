// Publishes the list of ports in "ports.json", and a broadcast, whenever it is another one than
// before. What an earlier run left is replaced in any case.
#pragma once

#include "background_monitor/container_writer.h"
#include "inventory/occupied_port.h"
#include "platform/broadcast_center.h"

#include <optional>
#include <vector>

namespace zenlot {

class PortPublisher {
  public:
    // The references must outlive the publisher.
    PortPublisher(const ContainerWriter& container, BroadcastCenter& broadcasts);

    // True when the list was published.
    bool publish(const std::vector<OccupiedPort>& ports);

    // The next list is published in any case.
    void forget() { published_.reset(); }

    // Publishes that there is nothing to be known any more.
    void withdraw();

    // Whether the list of last time has the port.
    bool lists(std::uint16_t port) const { return find(port) != nullptr; }

    // The owners on the list of last time, in its order.
    std::vector<ProcessId> owners() const;

    // The owner of the port on the list of last time; 0 when it has none.
    ProcessId ownerOf(std::uint16_t port) const;

  private:
    const OccupiedPort* find(std::uint16_t port) const;

    const ContainerWriter& container_;
    BroadcastCenter& broadcasts_;
    std::optional<std::vector<OccupiedPort>> published_;
};

} // namespace zenlot
