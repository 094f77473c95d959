// What the engines of containers tell those who may ask them. Asking takes a moment, so it belongs
// on a worker thread; an engine that does not answer is given up soon.
#pragma once

#include "inventory/origin/origin.h"

#include <string>
#include <utility>
#include <vector>

namespace zenlot {

struct RunningContainer {
    Container container;                                        // without an inner port
    std::vector<std::pair<std::uint16_t, std::uint16_t>> ports; // of the host, and behind it

    friend bool operator==(const RunningContainer&, const RunningContainer&) = default;
};

class ContainerEngines {
  public:
    ContainerEngines() = default;
    ContainerEngines(const ContainerEngines&) = delete;
    ContainerEngines& operator=(const ContainerEngines&) = delete;
    virtual ~ContainerEngines() = default;

    // Of all engines that this user may ask.
    virtual std::vector<RunningContainer> runningContainers() const = 0;

    // Asks the engine to end the container, and waits for it. Empty when it has, else why not.
    virtual std::string stop(const Container& container) const = 0;
};

} // namespace zenlot
