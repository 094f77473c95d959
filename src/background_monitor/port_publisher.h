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

    // The owner of the port on the list of last time; 0 when it has none.
    ProcessId ownerOf(std::uint16_t port) const;

  private:
    const ContainerWriter& container_;
    BroadcastCenter& broadcasts_;
    std::optional<std::vector<OccupiedPort>> published_;
};

} // namespace zenlot
