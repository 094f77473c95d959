// Makes a plan for a port and carries it out. Everything is asked again at the moment of the end:
// processes by id and start, units by the run that they are in, containers by their full id.
// Whatever is another one by then is left alone.
//
//     const StopPlan plan = stopper.plan(3000);
//     if (plan.kind != StopPlan::Kind::none) // tell stopSentence(plan), and once the user agrees:
//         const StopResult result = stopper.stop(plan);
//
// Takes seconds, and longer where somebody is asked for a password: for a worker thread.
#pragma once

#include "inventory/origin/container_engines.h"
#include "inventory/origin/origin_collector.h"
#include "inventory/origin/stop_plan.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zenlot {

class ServiceManagers {
  public:
    ServiceManagers() = default;
    ServiceManagers(const ServiceManagers&) = delete;
    ServiceManagers& operator=(const ServiceManagers&) = delete;
    virtual ~ServiceManagers() = default;

    // Names the run that the unit is in; empty when it is in none, or that is not known.
    virtual std::string invocation(const Unit& unit) const = 0;

    // Has the unit stopped and waits for it, if it is still in that run. Empty when it has ended,
    // else why not.
    virtual std::string stop(const Unit& unit, const std::string& invocation) const = 0;
};

class ProcessSignals {
  public:
    enum class Signal : std::uint8_t { terminate, kill };

    ProcessSignals() = default;
    ProcessSignals(const ProcessSignals&) = delete;
    ProcessSignals& operator=(const ProcessSignals&) = delete;
    virtual ~ProcessSignals() = default;

    // Nothing is sent to a process that has another start, or that may not be ended; see
    // force_quit.h.
    virtual bool send(const ProcessIdentity& process, Signal signal) const = 0;
};

struct StopResult {
    enum class Outcome : std::uint8_t {
        free,
        stillHeld,  // by those that were to end; they can be forced where they are processes
        takenAgain, // by others
        failed,
    };

    Outcome outcome{Outcome::failed};
    std::string reason;          // of a failure, as the system tells it
    std::vector<Origin> holders; // of the port now

    friend bool operator==(const StopResult&, const StopResult&) = default;
};

class PortStopper {
  public:
    using Pause = std::function<void(std::chrono::milliseconds)>;

    struct Collaborators {
        const OriginSources& sources;
        const OriginCollector& origins;
        const ProcessSignals& signals;
        const ServiceManagers& units;
        const ContainerEngines& containers;
    };

    // They must outlive the object.
    explicit PortStopper(const Collaborators& with, Pause pause = sleep);

    // For whoever is meant of those on the port, else for the first of them.
    StopPlan plan(std::uint16_t port, std::optional<std::int64_t> pid = std::nullopt) const;

    StopResult stop(const StopPlan& plan) const;

    // Ends the processes of the plan at once, as they did not end when they were asked to.
    StopResult force(const StopPlan& plan) const;

    static void sleep(std::chrono::milliseconds duration);

  private:
    bool isHeld(const StopPlan& plan) const;
    bool waitUntilFree(const StopPlan& plan, std::chrono::milliseconds longest) const;
    StopResult resultOf(const StopPlan& plan, std::string reason) const;
    std::vector<std::uint16_t> otherPortsOf(const StopPlan& plan) const;

    Collaborators with_;
    Pause pause_;
};

// What is true afterwards, in one sentence.
std::string resultSentence(const StopPlan& plan, const StopResult& result);

} // namespace zenlot
