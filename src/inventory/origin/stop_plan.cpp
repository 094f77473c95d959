#include "inventory/origin/stop_plan.h"

#include "inventory/origin/program_kind.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace zenlot {
namespace {

// Units with which the session or the machine goes.
bool isEssential(std::string_view unit) {
    constexpr std::array<std::string_view, 14> kBeginnings{
        "user@",  "dbus",  "systemd-",        "gdm",    "sddm",     "lightdm",         "greetd",
        "getty@", "login", "display-manager", "polkit", "session-", "NetworkManager.", "init."};
    return std::ranges::any_of(
        kBeginnings, [unit](std::string_view beginning) { return unit.starts_with(beginning); });
}

// What a desktop starts runs in units as well, and so do the terminals and what is started in them.
bool isServerOfUnit(const Origin& origin) {
    return origin.unit && origin.unit->name.ends_with(".service") &&
           !origin.unit->name.starts_with("app-") &&
           std::ranges::none_of(origin.startedBy, [](const Starter& starter) {
               return isNeverStopped(starter.kind);
           });
}

// From the server up to whatever would start it again. What people work in ends the way.
std::vector<ProcessIdentity> treeOf(const Origin& origin, std::string& name) {
    std::vector<ProcessIdentity> path{origin.process};
    for (const Starter& starter : origin.startedBy) {
        if (isNeverStopped(starter.kind))
            break;
        // A reloader runs the same program as its child.
        const bool isTop = starter.kind == ProgramKind::scriptRunner ||
                           starter.kind == ProgramKind::watcher ||
                           (starter.kind == ProgramKind::other && starter.name == origin.program);
        if (starter.kind == ProgramKind::other && !isTop)
            break;
        if (!isTop)
            continue; // a shell that carries out a line of a script
        path.insert(path.begin(), starter.process);
        name = starter.name;
    }
    return path;
}

} // namespace

StopPlan planStop(const Origin& origin, UserId currentUser) {
    StopPlan plan;
    plan.port = origin.port;
    plan.clients = origin.clients;
    plan.owners = origin.owners;
    for (const ListeningSocket& socket : origin.sockets)
        plan.sockets.push_back(socket.inode);
    plan.name = origin.program.empty() ? origin.processName : origin.program;

    if (origin.container && !origin.container->id.empty()) {
        plan.kind = StopPlan::Kind::container;
        plan.refusal = StopPlan::Refusal::none;
        plan.container = *origin.container;
        plan.name =
            plan.container.name.empty() ? plan.container.id.substr(0, 12) : plan.container.name;
        return plan;
    }
    // Whoever keeps ports open for containers serves others as well.
    if (origin.container)
        return plan;
    if (isNeverStopped(origin.kind)) {
        plan.refusal = StopPlan::Refusal::workplace;
        return plan;
    }

    const std::optional<Unit> service = isServerOfUnit(origin) ? origin.unit : std::nullopt;
    if (service || (origin.socketUnit && origin.process.pid == 0)) {
        for (const std::optional<Unit>& unit : {origin.socketUnit, service}) {
            if (unit && std::ranges::find(plan.units, *unit) == plan.units.end())
                plan.units.push_back(*unit);
        }
        plan.name = plan.units.back().name;
        const bool isOfUser = plan.units.back().manager == Unit::Manager::user;
        if (std::ranges::any_of(plan.units,
                                [](const Unit& unit) { return isEssential(unit.name); })) {
            plan.refusal = StopPlan::Refusal::workplace;
        } else if (isOfUser && plan.units.back().user != currentUser) {
            plan.refusal = StopPlan::Refusal::anotherUser;
        } else {
            plan.kind = isOfUser ? StopPlan::Kind::userUnit : StopPlan::Kind::systemUnit;
            plan.refusal = StopPlan::Refusal::none;
            return plan;
        }
        plan.units.clear();
        return plan;
    }
    if (origin.sockets.empty())
        return plan;
    if (origin.user != currentUser || origin.process.pid == 0) {
        plan.refusal = origin.user == currentUser ? StopPlan::Refusal::unknown
                                                  : StopPlan::Refusal::anotherUser;
        return plan;
    }
    plan.kind = StopPlan::Kind::processes;
    plan.refusal = StopPlan::Refusal::none;
    plan.processes = treeOf(origin, plan.name);
    const auto supervisor =
        std::ranges::find(origin.startedBy, ProgramKind::supervisor, &Starter::kind);
    if (supervisor != origin.startedBy.end())
        plan.supervisor = supervisor->name;
    return plan;
}

std::string stopSentence(const StopPlan& plan) {
    std::string sentence;
    switch (plan.kind) {
    case StopPlan::Kind::none:
        switch (plan.refusal) {
        case StopPlan::Refusal::workplace:
            return plan.name + " is a program that people work in or that the session needs; it is "
                               "not stopped for a port.";
        case StopPlan::Refusal::anotherUser:
            return "It belongs to another user, and to no service or container that could be "
                   "stopped.";
        case StopPlan::Refusal::none:
        case StopPlan::Refusal::unknown:
            break;
        }
        return "Nobody can tell what would have to be stopped.";
    case StopPlan::Kind::container:
        sentence = "Stops container " + plan.name;
        if (!plan.container.image.empty())
            sentence += " (" + plan.container.image + ")";
        if (!plan.container.composeProject.empty())
            sentence += " of compose project " + plan.container.composeProject;
        break;
    case StopPlan::Kind::userUnit:
    case StopPlan::Kind::systemUnit:
        sentence = "Stops ";
        for (const Unit& unit : plan.units)
            sentence += (&unit == &plan.units.front() ? "" : " and ") + unit.name;
        sentence += plan.kind == StopPlan::Kind::userUnit ? ", one of your services"
                                                          : ", a service of the system";
        break;
    case StopPlan::Kind::processes:
        sentence =
            "Stops " + plan.name + " (PID " + std::to_string(plan.processes.front().pid) + ")";
        if (plan.processes.size() > 1)
            sentence += ", which started the server on port " + std::to_string(plan.port);
        else if (plan.owners.size() > 1)
            sentence += " with its " + std::to_string(plan.owners.size() - 1) +
                        (plan.owners.size() == 2 ? " other process" : " other processes");
        break;
    }
    if (plan.clients == 1)
        sentence += "; 1 client is connected";
    else if (plan.clients > 1)
        sentence += "; " + std::to_string(plan.clients) + " clients are connected";
    for (const std::uint16_t port : plan.otherPorts)
        sentence += (port == plan.otherPorts.front() ? "; with it goes port " : ", ") +
                    std::to_string(port);
    if (!plan.supervisor.empty())
        sentence += "; " + plan.supervisor + " may start it again";
    return sentence + ".";
}

} // namespace zenlot
