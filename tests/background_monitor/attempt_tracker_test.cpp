#include "background_monitor/attempt_tracker.h"

#include <gmock/gmock.h>

namespace zenlot {
namespace {

using enum UnusedSocket::Kind;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr ProcessId kHolder = 100;
constexpr ProcessId kServer = 200;
constexpr std::uint64_t kHolderSocket = 7;
constexpr std::uint64_t kOwnSocket = 8;

class FakeMachine final : public Machine {
  public:
    std::vector<ListeningSocket> listening;
    std::vector<PortAnswer> written;
    bool isAllowed = true;
    bool hasAddresses = true;
    PortHolder holder{kHolder, BootTime(1000), {1}, "node", "Node"};
    bool isServerRunning = true;
    bool keepsSocket = false;

    std::vector<ListeningSocket> listeningSockets() const override { return listening; }
    bool isRunning(const Attempt&) const override { return isServerRunning; }
    std::vector<std::uint64_t> socketsOfTree(ProcessId) const override { return {kOwnSocket}; }
    bool keepsUnusedSocket(ProcessId) const override { return keepsSocket; }
    std::optional<PortHolder> holderOf(const ListeningSocket&) const override { return holder; }
    std::vector<PortAnswer> writtenPorts(const Attempt&,
                                         std::span<const std::uint16_t>) const override {
        return written;
    }
    bool mayListenOn(std::uint16_t) const override { return isAllowed; }
    bool hasAddress(const IpAddress&) const override { return hasAddresses; }
};

// A server that wants port 3000, which another process holds, and time that passes when it is told
// to.
class AttemptTrackerTest : public testing::Test {
  protected:
    AttemptTrackerTest() {
        machine.listening.push_back({{}, false, 3000, 0, kHolderSocket});
        attempt.pid = kServer;
        attempt.ancestors = {150, 1};
        attempt.origin = kServer;
        attempt.startedAt = now;
        attempt.runtime = &runtime;
        attempt.wanted = {WantedPort::Source::argument, 3000, {}};
        attempt.commandKey = 1;
    }

    void start() { tracker.processStarted(attempt, now); }
    void socketDies(UnusedSocket::Kind kind = unbound, AddressFamily family = AddressFamily::ipv6) {
        tracker.socketDied({kind, family}, now);
    }
    void end(ProcessEnd how = ProcessEnd::failed) {
        machine.isServerRunning = false;
        tracker.processEnded(attempt.pid, how, now);
    }
    void listenOn(std::uint16_t port, AddressFamily family = IpAddress().family) {
        machine.listening.push_back({{family}, false, port, 0, kOwnSocket});
    }

    // The ports of the verdicts of that time.
    std::vector<int> pass(BootTime time) {
        std::vector<int> ports;
        const BootTime last = now + time;
        while (tracker.nextLook() && *tracker.nextLook() <= last) {
            now = std::max(now, *tracker.nextLook());
            for (const Verdict& verdict : tracker.look(machine, now)) {
                EXPECT_EQ(verdict.holder.pid, kHolder);
                kinds.push_back(verdict.kind);
                ports.push_back(verdict.port);
            }
        }
        now = last;
        return ports;
    }

    // What is told when this happens 40 ms after the start, a letter for each step; f3000 for a
    // failed start, d for a server on another port, g for one that goes on:
    //   6 4    a socket that was never bound dies, of that family
    //   p n f  one that probed an address, asked a name server, found no route
    //   c      the kernel counts a connection that found no route
    //   e s    the server fails, or is stopped
    //   w      it ends well, of which nobody tells
    //   l h    it listens on its port, or on the half of it that is IPv6
    //   o x    it listens on the next port, or far from it
    //   _ - ~  time passes: a moment, 2.5 seconds, more than a start may take
    std::string story(std::string_view steps) {
        std::string told;
        kinds.clear();
        std::size_t count = 0;
        const auto wait = [&](BootTime time) {
            for (const int port : pass(time)) {
                const Verdict::Kind kind = kinds.at(count++);
                told += (kind == Verdict::Kind::failedStart ? "f"
                         : kind == Verdict::Kind::drift     ? "d"
                                                            : "g") +
                        std::to_string(port);
            }
        };
        const std::map<char, std::function<void()>> meanings{
            {'6', [&] { socketDies(unbound, AddressFamily::ipv6); }},
            {'4', [&] { socketDies(unbound, AddressFamily::ipv4); }},
            {'p', [&] { socketDies(addressProbe); }},
            {'n', [&] { socketDies(nameQuestion); }},
            {'f', [&] { socketDies(failedConnection); }},
            {'c', [&] { tracker.connectionsFailed(1, now); }},
            {'e', [&] { end(); }},
            {'s', [&] { end(ProcessEnd::stopped); }},
            {'w', [&] { machine.isServerRunning = false; }},
            {'l', [&] { listenOn(3000); }},
            {'h', [&] { listenOn(3000, AddressFamily::ipv6); }},
            {'o', [&] { listenOn(3001); }},
            {'x', [&] { listenOn(9000); }},
            {'_', [&] { wait(BootTime(20)); }},
            {'-', [&] { wait(BootTime(2500)); }},
            {'~', [&] { wait(AttemptTracker::kLongestStart * 2); }},
        };
        attempt.startedAt = now;
        start();
        wait(BootTime(40));
        for (const char step : steps)
            meanings.at(step)();
        wait(BootTime(60'000));
        return told;
    }

    // One start that fails after 40 ms.
    std::vector<int> fail() {
        attempt.startedAt = now;
        machine.isServerRunning = true;
        start();
        now += BootTime(40);
        socketDies();
        end();
        return pass(BootTime(500));
    }

    FakeMachine machine;
    Runtime runtime;
    Attempt attempt;
    AttemptTracker tracker;
    BootTime now{50'000};
    std::vector<Verdict::Kind> kinds;
};

TEST_F(AttemptTrackerTest, OnlyWhatWasRefusedIsAConflict) {
    const auto java = [this] { runtime.probesProtocols = true; };
    const auto wants = [this](const char* address) {
        attempt.wanted.addresses = {*IpAddress::parse(address)};
    };
    const auto isUsual = [this] { attempt.wanted.source = WantedPort::Source::usual; };
    const auto hears = [this](AttemptTracker::DeadSockets sockets, AttemptTracker::Ends ends) {
        return [this, sockets, ends] { tracker = AttemptTracker(sockets, ends); };
    };
    using enum AttemptTracker::DeadSockets;
    using Ends = AttemptTracker::Ends;
    const std::tuple<const char*, const char*, const char*, std::function<void()>> cases[]{
        {"fails", "6e", "f3000", {}},
        {"takes the next port", "6_o", "d3000", {}},
        {"serves far from a port that nobody has named", "6_x", "", isUsual},
        {"asks, and goes on", "6-6-6", "g3000", [this] { runtime.goesOnWithoutPort = true; }},
        {"lives on without its port", "6", "g3000", {}},
        {"may be slow, since nobody has named the port", "6", "", isUsual},
        {"nobody tells of ends", "6w", "f3000", hears(seen, Ends::unseen)},
        {"nobody tells of sockets", "e", "f3000", hears(unseen, Ends::told)},
        {"nobody tells of sockets, and a tool takes the next port", "o", "d3000",
         [this] {
             tracker = AttemptTracker(unseen);
             runtime.drifts = true;
         }},
        {"nobody tells of either", "e", "", hears(unseen, Ends::unseen)},
        {"never closes its socket", "_--", "g3000", [this] { machine.keepsSocket = true; }},
        {"the same, but it listens", "_l--", "", [this] { machine.keepsSocket = true; }},
        {"the same, but nobody has named the port", "_--~", "",
         [&] {
             machine.keepsSocket = true;
             isUsual();
         }},
        {"the same, but it was there first", "_--", "",
         [this] {
             machine.keepsSocket = true;
             machine.holder.startedAt = now + BootTime(100);
         }},
        {"the word of the socket comes last", "e_6", "f3000", {}},
        {"says that all went well", "6w", "f3000", {}},
        {"a Java server, behind its probe", "64n____6e", "f3000", java},
        {"got half of its port", "4h", "d3000", {}},
        {"crash without a dead socket", "e", "", {}},
        {"a socket that died long before the end", "6-e", "", isUsual},
        {"the Go runtime's probe", "4pe", "", {}},
        {"the same, told the other way round", "p4e", "", {}},
        {"the Java machine's probe", "464e", "", java},
        {"the same, beside somebody's connection", "464ce", "", java},
        {"a Java client's socket, for a name that does not exist", "n_6e", "", java},
        {"Ctrl-C", "6s", "", {}},
        {"a connection over IPv6 that found no route", "fe", "", {}},
        {"one over IPv4, counted before", "c4e", "", {}},
        {"one over IPv4, counted after", "4ce", "", {}},
        {"too late", "~6e", "", {}},
        {"not allowed to whoever holds it", "6e", "", [&] { machine.isAllowed = false; }},
        {"port free", "6e", "", [&] { machine.listening.clear(); }},
        {"held by its parent", "6e", "", [&] { attempt.ancestors.push_back(kHolder); }},
        {"held by its child", "6e", "",
         [&] {
             machine.holder.ancestors = {kServer, 1};
         }},
        {"holder came later", "6e", "", [&] { machine.holder.startedAt = now + BootTime(50); }},
        {"has the port", "l6", "", {}},
        {"listens elsewhere without having been refused", "o", "", {}},
        {"an address that is not here", "6e", "",
         [&] {
             machine.hasAddresses = false;
             wants("0.0.0.0");
         }},
        {"other address", "6e", "",
         [&] {
             machine.listening[0].address = *IpAddress::parse("127.0.0.2");
             wants("127.0.0.1");
         }},
    };
    const auto listening = machine.listening;
    const PortHolder holder = machine.holder;
    const Attempt original = attempt;
    for (const auto& [what, steps, told, change] : cases) {
        tracker = AttemptTracker();
        machine.listening = listening;
        machine.holder = holder;
        machine.isAllowed = machine.hasAddresses = machine.isServerRunning = true;
        machine.keepsSocket = false;
        runtime = {};
        attempt = original;
        if (change)
            change();
        EXPECT_EQ(story(steps), told) << what;
        EXPECT_TRUE(tracker.isIdle() || machine.isServerRunning) << what;
    }
}

TEST_F(AttemptTrackerTest, UnknownProgramGoesOnWhenNobodyElseCanHaveBeenRefused) {
    runtime.programs = {std::string(kAnyProgram)};
    start();
    socketDies();
    EXPECT_THAT(pass(BootTime(1900)), IsEmpty());
    EXPECT_THAT(pass(BootTime(1200)), ElementsAre(3000));

    tracker = AttemptTracker();
    attempt.startedAt = now;
    start();
    Attempt other = attempt;
    other.pid = kServer + 1;
    other.commandKey = 2;
    other.ancestors = {};
    tracker.processStarted(other, now);
    socketDies();
    EXPECT_THAT(pass(BootTime(4000)), IsEmpty());
}

TEST_F(AttemptTrackerTest, PortOfADebuggerIsAskedForFirst) {
    attempt.wanted = {WantedPort::Source::argument, 4000, {}};
    attempt.debugger = WantedPort{WantedPort::Source::argument, 3000, {}};
    start();
    socketDies();
    listenOn(4000); // it serves without
    EXPECT_THAT(pass(BootTime(2000)), ElementsAre(3000));
    EXPECT_THAT(kinds, ElementsAre(Verdict::Kind::goesOn));

    tracker = AttemptTracker();
    machine.listening.pop_back();
    runtime.probesProtocols = true;
    attempt.startedAt = now;
    start();
    socketDies(unbound, AddressFamily::ipv4); // no code of Java's has run that probes
    end();
    EXPECT_THAT(pass(BootTime(500)), ElementsAre(3000));

    tracker = AttemptTracker();
    attempt.startedAt = now;
    machine.holder.startedAt = now + BootTime(10); // a program that it started to wait there
    machine.isServerRunning = true;
    start();
    now += BootTime(50);
    socketDies();
    listenOn(4000);
    EXPECT_THAT(pass(BootTime(60'000)), IsEmpty());
}

TEST_F(AttemptTrackerTest, PortComesFromTheHighestSourceThatNamesOne) {
    runtime.mayNamePortItself = true;
    attempt.wanted = {WantedPort::Source::usual, 3000, {}};
    EXPECT_THAT(fail(), ElementsAre(3000));

    // It listens on 4000 now, and wants that again the next time.
    machine.listening.clear();
    listenOn(4000);
    machine.isServerRunning = true;
    start();
    pass(BootTime(60'000));
    machine.listening = {{{}, false, 3000, 0, kHolderSocket}};
    EXPECT_THAT(fail(), IsEmpty());
    machine.listening.push_back({{}, false, 4000, 0, kHolderSocket});
    pass(BootTime(10'000));
    EXPECT_THAT(fail(), ElementsAre(4000));

    const std::pair<PortAnswer, std::vector<int>> cases[]{
        {{PortSource::source, {3000}}, {4000}},   // what it did counts for more
        {{PortSource::settings, {3000}}, {3000}}, // what was said counts for more still
        {{PortSource::settings, {5000}}, {}},     // it wanted another one, which is free
        {{PortSource::settings, {3000, 5000}}, {3000}},
        {{PortSource::settings, {3000, 4000}}, {}}, // either
    };
    for (const auto& [written, ports] : cases) {
        machine.written = {written};
        pass(AttemptTracker::kLoopPause);
        EXPECT_EQ(fail(), ports) << static_cast<int>(written.source) << ' ' << written.ports[0];
    }
}

TEST_F(AttemptTrackerTest, WhatOnlyTheProjectMentionsNeedsASocketThatNobodyElseCanHaveLeft) {
    runtime.mayNamePortItself = true;
    attempt.wanted = {};
    machine.written = {{PortSource::project, {3000}}};
    EXPECT_THAT(fail(), ElementsAre(3000));

    pass(AttemptTracker::kLoopPause);
    Attempt other = attempt;
    other.pid = 300;
    other.commandKey = 2;
    other.startedAt = now;
    tracker.processStarted(other, now);
    EXPECT_THAT(fail(), IsEmpty());
    machine.written = {{PortSource::source, {3000}}};
    pass(AttemptTracker::kLoopPause);
    EXPECT_THAT(fail(), ElementsAre(3000));
}

TEST_F(AttemptTrackerTest, SlowServersAndFasterHoldersAreWaitedFor) {
    start();
    pass(BootTime(180'000));
    machine.holder.startedAt = now - BootTime(1); // and bound the port first
    socketDies();
    end();
    EXPECT_THAT(pass(BootTime(500)), ElementsAre(3000));
}

TEST_F(AttemptTrackerTest, LoopIsAnnouncedOnceAMinute) {
    const auto failures = [&](BootTime pause, bool byWatcher) {
        std::size_t announced = 0;
        for (BootTime time{0}; time < BootTime(65'000); time += pause) {
            attempt.pid += 1;
            attempt.origin = byWatcher ? 42 : attempt.pid;
            announced += fail().size();
            pass(pause - BootTime(540));
        }
        return announced;
    };
    EXPECT_EQ(failures(BootTime(1000), false), 2U); // a fast loop, whoever runs it
    pass(AttemptTracker::kLoopPause);
    EXPECT_EQ(failures(BootTime(10'000), true), 2U);
    pass(AttemptTracker::kLoopPause);
    EXPECT_EQ(failures(BootTime(10'000), false), 7U); // somebody who tries again
}

TEST_F(AttemptTrackerTest, ChildrenOfOneCommandAreOneAttempt) {
    start();
    Attempt child = attempt;
    child.pid = 201;
    child.ancestors.insert(child.ancestors.begin(), kServer);
    tracker.processStarted(child, now);
    socketDies();
    tracker.processEnded(201, ProcessEnd::stopped, now);
    tracker.processEnded(201, ProcessEnd::failed, now);
    EXPECT_THAT(pass(BootTime(1000)), ElementsAre(3000));
    EXPECT_TRUE(tracker.isIdle());
}

TEST_F(AttemptTrackerTest, CommandsThatFailTogetherAreToldOnce) {
    EXPECT_THAT(fail(), ElementsAre(3000));
    attempt.pid = attempt.origin = 201;
    attempt.commandKey = 2;
    EXPECT_THAT(fail(), IsEmpty());
    pass(BootTime(3000));
    EXPECT_THAT(fail(), ElementsAre(3000));
}

} // namespace
} // namespace zenlot
