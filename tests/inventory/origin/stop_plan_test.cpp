#include "inventory/origin/fake_managers.h"
#include "inventory/origin/fake_origin_sources.h"
#include "inventory/origin/port_stopper.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zenlot {
namespace {

constexpr std::uint16_t kPort = 3000;

Origin serverOf(UserId user, std::vector<Starter> startedBy = {}) {
    Origin origin;
    origin.port = kPort;
    origin.process = {50, 1};
    origin.user = user;
    origin.processName = origin.program = "node";
    origin.startedBy = std::move(startedBy);
    origin.sockets.emplace_back().inode = 9;
    return origin;
}

std::string idsOf(const StopPlan& plan) {
    std::string ids;
    for (const Unit& unit : plan.units)
        ids += unit.name + " ";
    for (const ProcessIdentity& process : plan.processes)
        ids += std::to_string(process.pid) + " ";
    return ids + plan.container.name;
}

TEST(StopPlanTest, EndsWhatWouldStartTheServerAgain) {
    const UserId me = 7;
    const auto starter = [](std::int64_t pid, ProgramKind kind, const char* name) {
        return Starter{{pid, 1}, kind, name};
    };
    const Starter npm = starter(40, ProgramKind::scriptRunner, "npm run dev");
    const Starter script = starter(41, ProgramKind::shellScript, "sh");
    const Starter shell = starter(30, ProgramKind::shell, "zsh");
    const Unit system{Unit::Manager::system, "web.service", 0};
    const Unit socket{Unit::Manager::system, "web.socket", 0};
    const Unit own{Unit::Manager::user, "web.service", me};

    struct Case {
        const char* about;
        Origin origin;
        StopPlan::Kind kind;
        std::string ends;
    };
    std::vector<Case> cases;
    const auto add = [&cases](const char* about, const Origin& origin, StopPlan::Kind kind,
                              const std::string& ends) {
        cases.push_back({about, origin, kind, ends});
    };
    using Kind = StopPlan::Kind;
    add("plain", serverOf(me, {shell}), Kind::processes, "50 ");
    add("runner", serverOf(me, {script, npm, shell}), Kind::processes, "40 50 ");
    add("unknown starter", serverOf(me, {starter(45, ProgramKind::other, "launcher"), npm}),
        Kind::processes, "50 ");
    add("reloader", serverOf(me, {starter(45, ProgramKind::other, "node"), shell, npm}),
        Kind::processes, "45 50 ");
    add("watcher of a runner", serverOf(me, {starter(45, ProgramKind::watcher, "nodemon"), npm}),
        Kind::processes, "40 45 50 ");
    add("another user's", serverOf(8), Kind::none, "");
    for (const ProgramKind kind : {ProgramKind::editor, ProgramKind::browser, ProgramKind::shell,
                                   ProgramKind::multiplexer, ProgramKind::session}) {
        Origin workplace = serverOf(me);
        workplace.kind = kind;
        add("workplace", workplace, Kind::none, "");
    }

    Origin service = serverOf(8);
    service.unit = system;
    add("service", service, Kind::systemUnit, "web.service ");
    service.socketUnit = socket;
    add("activated", service, Kind::systemUnit, "web.socket web.service ");
    service.unit.reset();
    service.process = {};
    add("waiting to be activated", service, Kind::systemUnit, "web.socket ");
    service = serverOf(me);
    service.unit = own;
    add("own service", service, Kind::userUnit, "web.service ");
    service.unit->user = 8;
    add("another user's service", service, Kind::none, "");
    service = serverOf(me, {shell});
    service.unit = Unit{Unit::Manager::user, "terminal.service", me};
    add("in a terminal that is a service", service, Kind::processes, "50 ");
    service = serverOf(me);
    service.unit = Unit{Unit::Manager::user, "app-mail@1.service", me};
    add("application", service, Kind::processes, "50 ");
    service.unit = Unit{Unit::Manager::system, "dbus.service", 0};
    add("essential", service, Kind::none, "");

    Origin container = serverOf(0);
    container.unit = Unit{Unit::Manager::system, "docker.service", 0};
    container.container.emplace().name = "shop-db";
    add("container without an id", container, Kind::none, "");
    container.container->id = "12ab";
    add("container", container, Kind::container, "shop-db");

    for (const auto& [about, origin, kind, ends] : cases) {
        const StopPlan plan = planStop(origin, me);
        EXPECT_EQ(plan.kind, kind) << about;
        EXPECT_EQ(plan.kind == Kind::none, plan.refusal != StopPlan::Refusal::none) << about;
        EXPECT_EQ(plan.kind == Kind::none ? ends : idsOf(plan), ends) << about;
        EXPECT_TRUE(stopSentence(plan).ends_with('.')) << about;
    }
    const Origin watched = serverOf(me, {starter(35, ProgramKind::supervisor, "pm2")});
    EXPECT_NE(stopSentence(planStop(watched, me)).find("pm2"), std::string::npos);
    container.container->image = "postgres";
    container.container->composeProject = "shop";
    container.clients = 3;
    EXPECT_EQ(stopSentence(planStop(container, me)),
              "Stops container shop-db (postgres) of compose project shop; 3 clients are "
              "connected.");
}

// A machine whose servers end as they are made to.
struct StopMachine {
    FakeOriginSources sources;
    OriginCollector origins{sources};
    FakeManagers managers;
    PortStopper stopper{{sources, origins, managers, managers, managers},
                        [](std::chrono::milliseconds) {}};

    void end(std::int64_t pid) {
        sources.processes.erase(static_cast<ProcessId>(pid));
        sources.held.erase(static_cast<ProcessId>(pid));
        if (pid == 50)
            sources.sockets.clear();
    }
};

TEST(PortStopperTest, SaysWhatIsTrueAfterwards) {
    using Outcome = StopResult::Outcome;
    const struct {
        bool ignores;
        bool comesAgain;
        Outcome outcome;
        const char* sentence;
    } cases[] = {
        {false, false, Outcome::free, "Port 3000 is free."},
        {false, true, Outcome::takenAgain,
         "npm run dev has ended, and node (PID 60) has taken port 3000 again."},
        {true, false, Outcome::stillHeld,
         "npm run dev has been asked to end and still holds port 3000."},
    };
    for (const auto& [ignores, comesAgain, outcome, sentence] : cases) {
        StopMachine machine;
        machine.managers.onSignal = [&machine, ignores = ignores,
                                     comesAgain = comesAgain](const ProcessIdentity& process,
                                                              ProcessSignals::Signal signal) {
            if (ignores && signal == ProcessSignals::Signal::terminate)
                return;
            machine.end(process.pid);
            if (!comesAgain || process.pid != 50)
                return;
            machine.sources.addServer(60, {"node", "server.js"}, kPort);
            machine.sources.sockets.back().inode = 77;
            machine.sources.held[60] = {77};
        };
        machine.sources.addProcess(40, {"npm run dev"});
        ProcessGlimpse& server = machine.sources.addServer(50, {"node", "server.js"}, kPort);
        server.parent = 40;
        server.user = currentUserId();
        machine.sources.addServer(51, {"node", "other.js"}, 3001).parent = 40;
        const StopPlan plan = machine.stopper.plan(kPort);
        EXPECT_EQ(stopSentence(plan), "Stops npm run dev (PID 40), which started the server on "
                                      "port 3000; with it goes port 3001.");
        const StopResult result = machine.stopper.stop(plan);
        EXPECT_EQ(result.outcome, outcome);
        EXPECT_EQ(machine.managers.calls(),
                  (std::vector<std::string>{"terminate 40", "terminate 50"}));
        EXPECT_EQ(resultSentence(plan, result), sentence);
        if (outcome == Outcome::stillHeld) {
            EXPECT_EQ(machine.stopper.force(plan).outcome, Outcome::free);
        }
    }
}

TEST(PortStopperTest, TellsWhatManagersSay) {
    StopMachine machine;
    machine.sources.addServer(50, {"web"}, kPort).controlGroup = "/system.slice/web.service";
    const StopPlan plan = machine.stopper.plan(kPort, 50);
    machine.managers.failure = "Access denied";
    EXPECT_EQ(resultSentence(plan, machine.stopper.stop(plan)),
              "web.service could not be stopped: Access denied.");
    EXPECT_EQ(machine.managers.calls(),
              std::vector<std::string>{"stop web.service in run of web.service"});
    EXPECT_EQ(machine.stopper.plan(kPort, 51).kind, StopPlan::Kind::none) << "somebody else";
}

} // namespace
} // namespace zenlot
