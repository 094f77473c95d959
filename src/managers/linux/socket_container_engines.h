// The engines of containers that listen on the usual Unix sockets and speak Docker's protocol:
// Docker itself and Podman's service, of the system and of the user. An engine that this user may
// not ask is no engine.
#pragma once

#include "inventory/origin/container_engines.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

// What an engine answers to the question for its containers; empty when it makes no sense.
std::vector<RunningContainer> decodeContainers(std::string_view json);

class SocketContainerEngines final : public ContainerEngines {
  public:
    // The sockets that there are by now are asked, in this order.
    explicit SocketContainerEngines(std::vector<std::string> sockets = usualSockets());

    std::vector<RunningContainer> runningContainers() const override;
    std::string stop(const Container& container) const override;

    static std::vector<std::string> usualSockets();

  private:
    std::vector<std::string> sockets_;
};

} // namespace zenlot
