#include "inventory/origin/port_stopper.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <thread>
#include <utility>

namespace zenlot {
namespace {

using namespace std::chrono_literals;

// A watcher ends its server by itself, mostly.
constexpr auto kPatienceWithTheFirst = 1500ms;
constexpr auto kPatience = 3500ms; // with all of them
constexpr auto kStep = 50ms;
// Who would take the port again has done so by then.
constexpr auto kSettling = 1s;

} // namespace

PortStopper::PortStopper(const Collaborators& with, Pause pause)
    : with_(with), pause_(std::move(pause)) {}

void PortStopper::sleep(std::chrono::milliseconds duration) {
    std::this_thread::sleep_for(duration);
}

StopPlan PortStopper::plan(std::uint16_t port, std::optional<std::int64_t> pid) const {
    const std::vector<Origin> origins = with_.origins.originsOnPort(port);
    const auto meant = std::ranges::find_if(origins, [pid](const Origin& origin) {
        return !pid || origin.process.pid == *pid ||
               std::ranges::find(origin.owners, *pid, &ProcessIdentity::pid) != origin.owners.end();
    });
    StopPlan plan;
    plan.port = port;
    if (meant == origins.end())
        return plan;
    plan = planStop(*meant);
    for (const Unit& unit : plan.units)
        plan.invocations.push_back(with_.units.invocation(unit));
    if (plan.kind == StopPlan::Kind::processes)
        plan.otherPorts = otherPortsOf(plan);
    return plan;
}

// What else those listen on that go with the first of the processes.
std::vector<std::uint16_t> PortStopper::otherPortsOf(const StopPlan& plan) const {
    std::set<ProcessId> tree{processIdOf(plan.processes.front().pid)};
    std::multimap<ProcessId, ProcessId> children;
    for (const ProcessId pid : with_.sources.pids()) {
        if (const auto glimpse = with_.sources.process(pid))
            children.emplace(glimpse->parent, pid);
    }
    std::vector<ProcessId> next(tree.begin(), tree.end());
    while (!next.empty()) {
        const auto [first, last] = children.equal_range(next.back());
        next.pop_back();
        for (auto child = first; child != last; ++child) {
            if (tree.insert(child->second).second)
                next.push_back(child->second);
        }
    }
    std::set<std::uint16_t> ports;
    const std::vector<ListeningSocket> listening = with_.sources.listeningSockets(std::nullopt);
    std::vector<std::uint64_t> inodes;
    for (const ListeningSocket& socket : listening)
        inodes.push_back(socket.inode);
    for (const ProcessId pid : tree) {
        for (const std::uint64_t inode : with_.sources.socketsHeldBy(pid, inodes)) {
            const auto socket = std::ranges::find(listening, inode, &ListeningSocket::inode);
            if (socket->port != plan.port)
                ports.insert(socket->port);
        }
    }
    return {ports.begin(), ports.end()};
}

bool PortStopper::isHeld(const StopPlan& plan) const {
    return std::ranges::any_of(
        with_.sources.listeningSockets(plan.port), [&plan](const ListeningSocket& socket) {
            return std::ranges::find(plan.sockets, socket.inode) != plan.sockets.end();
        });
}

bool PortStopper::waitUntilFree(const StopPlan& plan, std::chrono::milliseconds longest) const {
    for (auto waited = 0ms; isHeld(plan); waited += kStep) {
        if (waited >= longest)
            return false;
        pause_(kStep);
    }
    return true;
}

StopResult PortStopper::stop(const StopPlan& plan) const {
    std::string reason;
    switch (plan.kind) {
    case StopPlan::Kind::none:
        return {};
    case StopPlan::Kind::container:
        reason = with_.containers.stop(plan.container);
        break;
    case StopPlan::Kind::userUnit:
    case StopPlan::Kind::systemUnit:
        for (std::size_t place = 0; place < plan.units.size() && reason.empty(); ++place)
            reason = with_.units.stop(plan.units[place], plan.invocations[place]);
        break;
    case StopPlan::Kind::processes:
        with_.signals.send(plan.processes.front(), ProcessSignals::Signal::terminate);
        if (waitUntilFree(plan, kPatienceWithTheFirst))
            break;
        for (std::size_t place = 1; place < plan.processes.size(); ++place)
            with_.signals.send(plan.processes[place], ProcessSignals::Signal::terminate);
        waitUntilFree(plan, kPatience);
        break;
    }
    return resultOf(plan, std::move(reason));
}

StopResult PortStopper::force(const StopPlan& plan) const {
    if (plan.kind != StopPlan::Kind::processes)
        return {};
    std::vector<ProcessIdentity> processes = plan.processes;
    std::ranges::copy_if(
        plan.owners, std::back_inserter(processes), [&plan](const ProcessIdentity& owner) {
            return std::ranges::find(plan.processes, owner) == plan.processes.end();
        });
    for (const ProcessIdentity& process : processes)
        with_.signals.send(process, ProcessSignals::Signal::kill);
    waitUntilFree(plan, kPatience);
    return resultOf(plan, {});
}

StopResult PortStopper::resultOf(const StopPlan& plan, std::string reason) const {
    StopResult result;
    result.reason = std::move(reason);
    if (isHeld(plan)) {
        result.outcome =
            result.reason.empty() ? StopResult::Outcome::stillHeld : StopResult::Outcome::failed;
        return result;
    }
    for (auto waited = 0ms; waited < kSettling && result.holders.empty(); waited += kStep) {
        pause_(kStep);
        if (!with_.sources.listeningSockets(plan.port).empty())
            result.holders = with_.origins.originsOnPort(plan.port);
    }
    result.outcome =
        result.holders.empty() ? StopResult::Outcome::free : StopResult::Outcome::takenAgain;
    return result;
}

std::string resultSentence(const StopPlan& plan, const StopResult& result) {
    const std::string port = "Port " + std::to_string(plan.port);
    switch (result.outcome) {
    case StopResult::Outcome::free:
        return port + " is free.";
    case StopResult::Outcome::stillHeld:
        return plan.name + " has been asked to end and still holds port " +
               std::to_string(plan.port) + ".";
    case StopResult::Outcome::takenAgain: {
        const Origin& holder = result.holders.front();
        std::string name = holder.processName.empty() ? "Another process" : holder.processName;
        if (holder.process.pid != 0)
            name += " (PID " + std::to_string(holder.process.pid) + ")";
        return plan.name + " has ended, and " + name + " has taken port " +
               std::to_string(plan.port) + " again.";
    }
    case StopResult::Outcome::failed:
        break;
    }
    return plan.name + " could not be stopped" +
           (result.reason.empty() ? "." : ": " + result.reason + ".");
}

} // namespace zenlot
