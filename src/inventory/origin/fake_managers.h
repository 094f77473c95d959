// Those who end things, for tests: signals, the service managers and the engines of containers.
// They remember what they were asked, and do what the test says.
#pragma once

#include "inventory/origin/port_stopper.h"

#include <functional>

namespace zenlot {

class FakeManagers final : public ProcessSignals, public ServiceManagers, public ContainerEngines {
  public:
    std::function<void(const ProcessIdentity&, Signal)> onSignal;
    std::string failure; // of units and containers
    std::vector<RunningContainer> containers;

    const std::vector<std::string>& calls() const { return calls_; }

    bool send(const ProcessIdentity& process, Signal signal) const override {
        calls_.push_back((signal == Signal::kill ? "kill " : "terminate ") +
                         std::to_string(process.pid));
        if (onSignal)
            onSignal(process, signal);
        return true;
    }
    std::string invocation(const Unit& unit) const override { return "run of " + unit.name; }
    std::string stop(const Unit& unit, const std::string& invocation) const override {
        calls_.push_back("stop " + unit.name + " in " + invocation);
        return failure;
    }
    std::vector<RunningContainer> runningContainers() const override { return containers; }
    std::string stop(const Container& container) const override {
        calls_.push_back("stop " + container.id);
        return failure;
    }

  private:
    mutable std::vector<std::string> calls_;
};

} // namespace zenlot
