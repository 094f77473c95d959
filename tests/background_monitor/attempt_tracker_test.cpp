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

    // The ports that are told when this happens 40 ms after the start, a letter for each step:
    //   6 4    a socket that was never bound dies, of that family
    //   p n f  one that probed an address, asked a name server, found no route
    //   c      the kernel counts a connection that found no route
    //   e s    the server fails, or is stopped
    //   w      it ends well, of which nobody tells
    //   l h o  it listens on its port, on the half of it that is IPv6, or on another one
    //   _ - ~  time passes: a moment, 2.5 seconds, more than a start may take
    std::vector<int> story(std::string_view steps) {
        std::vector<int> told;
        const auto wait = [&](BootTime time) {
            std::ranges::copy(pass(time), std::back_inserter(told));
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

TEST_F(AttemptTrackerTest, FailedStartNamesTheHolderAtOnce) {
    start();
    now += BootTime(40);
    socketDies();
    end();
    EXPECT_THAT(pass(BootTime(30)), ElementsAre(3000));
    EXPECT_THAT(kinds, ElementsAre(Verdict::Kind::failedStart));
    EXPECT_TRUE(tracker.isIdle());
}

TEST_F(AttemptTrackerTest, OnlyWhatWasRefusedIsAConflict) {
    const auto java = [this] { runtime.probesProtocols = true; };
    const auto wants = [this](const char* address) {
        attempt.wanted.addresses = {*IpAddress::parse(address)};
    };
    const std::vector<int> told{3000};
    const std::vector<int> nothing;
    const std::tuple<const char*, const char*, std::vector<int>, std::function<void()>> cases[]{
        {"the word of the socket comes last", "e_6", told, {}},
        {"says that all went well", "6w", told, {}},
        {"a Java server, behind its probe", "64n____6e", told, java},
        {"got half of its port", "4h", told, {}},
        {"crash without a dead socket", "e", nothing, {}},
        {"a socket that died long before the end", "6-e", nothing,
         [&] { attempt.wanted.source = WantedPort::Source::usual; }},
        {"the Go runtime's probe", "4pe", nothing, {}},
        {"the same, told the other way round", "p4e", nothing, {}},
        {"the Java machine's probe", "464e", nothing, java},
        {"the same, beside somebody's connection", "464ce", nothing, java},
        {"a Java client's socket, for a name that does not exist", "n_6e", nothing, java},
        {"Ctrl-C", "6s", nothing, {}},
        {"a connection over IPv6 that found no route", "fe", nothing, {}},
        {"one over IPv4, counted before", "c4e", nothing, {}},
        {"one over IPv4, counted after", "4ce", nothing, {}},
        {"too late", "~6e", nothing, {}},
        {"not allowed to whoever holds it", "6e", nothing, [&] { machine.isAllowed = false; }},
        {"port free", "6e", nothing, [&] { machine.listening.clear(); }},
        {"held by its parent", "6e", nothing, [&] { attempt.ancestors.push_back(kHolder); }},
        {"held by its child", "6e", nothing,
         [&] {
             machine.holder.ancestors = {kServer, 1};
         }},
        {"holder came later", "6e", nothing,
         [&] { machine.holder.startedAt = now + BootTime(50); }},
        {"has the port", "l6", nothing, {}},
        {"listens elsewhere without having been refused", "o", nothing, {}},
        {"an address that is not here", "6e", nothing,
         [&] {
             machine.hasAddresses = false;
             wants("0.0.0.0");
         }},
        {"other address", "6e", nothing,
         [&] {
             machine.listening[0].address = *IpAddress::parse("127.0.0.2");
             wants("127.0.0.1");
         }},
    };
    const auto listening = machine.listening;
    const PortHolder holder = machine.holder;
    const Attempt original = attempt;
    for (const auto& [what, steps, ports, change] : cases) {
        tracker = AttemptTracker();
        machine.listening = listening;
        machine.holder = holder;
        machine.isAllowed = machine.hasAddresses = machine.isServerRunning = true;
        runtime = {};
        attempt = original;
        if (change)
            change();
        EXPECT_EQ(story(steps), ports) << what;
        EXPECT_TRUE(tracker.isIdle()) << what;
    }
}

TEST_F(AttemptTrackerTest, DriftIsSeenWhereTheToolOrTheUserSaidWhichPort) {
    start();
    now += BootTime(300);
    socketDies();
    EXPECT_THAT(pass(BootTime(400)), IsEmpty());
    listenOn(3817);
    EXPECT_THAT(pass(BootTime(1000)), ElementsAre(3000));
    EXPECT_THAT(kinds, ElementsAre(Verdict::Kind::drift));
}

TEST_F(AttemptTrackerTest, ToolThatAsksGoesOn) {
    runtime.goesOnWithoutPort = true;
    start();
    for (int retry = 0; retry < 5; ++retry) {
        socketDies();
        EXPECT_EQ(pass(BootTime(1000)).size(), retry == 0 ? 1 : 0);
    }
    EXPECT_THAT(kinds, ElementsAre(Verdict::Kind::goesOn));
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

TEST_F(AttemptTrackerTest, SocketThatIsNeverClosedTellsAsMuchAsADeadOne) {
    machine.keepsSocket = true;
    EXPECT_THAT(story("_--"), ElementsAre(3000));
    EXPECT_THAT(story("_l--"), IsEmpty()) << "it listens";
    attempt.wanted = {WantedPort::Source::usual, 3000, {}};
    EXPECT_THAT(story("_--~"), IsEmpty()) << "nobody has named the port";
    attempt.wanted.source = WantedPort::Source::argument;
    machine.holder.startedAt = now + BootTime(100);
    EXPECT_THAT(story("_--"), IsEmpty()) << "it was there first";
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

TEST_F(AttemptTrackerTest, EndsThatSayNothingAreFound) {
    // It lives on, and its port was named.
    attempt.commandKey = 2;
    attempt.startedAt = now;
    machine.isServerRunning = true;
    start();
    socketDies();
    EXPECT_THAT(pass(BootTime(1000)), IsEmpty());
    EXPECT_THAT(pass(BootTime(3000)), ElementsAre(3000));

    // Its port is only a habit, so it may as well be slow.
    attempt.commandKey = 3;
    attempt.startedAt = now;
    attempt.wanted = {WantedPort::Source::usual, 3000, {}};
    start();
    socketDies();
    EXPECT_THAT(pass(BootTime(10'000)), IsEmpty());
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
    tracker.processEnded(201, ProcessEnd::failed, now);
    tracker.processEnded(kServer, ProcessEnd::failed, now);
    EXPECT_THAT(pass(BootTime(1000)), ElementsAre(3000));
}

TEST_F(AttemptTrackerTest, CommandsThatFailTogetherAreToldOnce) {
    EXPECT_THAT(fail(), ElementsAre(3000));
    attempt.pid = attempt.origin = 201;
    attempt.commandKey = 2;
    EXPECT_THAT(fail(), IsEmpty());
    pass(BootTime(3000));
    EXPECT_THAT(fail(), ElementsAre(3000));
}

TEST_F(AttemptTrackerTest, EndThatNobodyToldOfIsFound) {
    tracker = AttemptTracker(AttemptTracker::DeadSockets::seen, AttemptTracker::Ends::unseen);
    start();
    socketDies();
    machine.isServerRunning = false;
    EXPECT_THAT(pass(BootTime(500)), ElementsAre(3000));
}

TEST_F(AttemptTrackerTest, WithoutWordOfSocketsAnEndIsEnough) {
    tracker = AttemptTracker(AttemptTracker::DeadSockets::unseen);
    start();
    end();
    EXPECT_THAT(pass(BootTime(500)), ElementsAre(3000));

    // A tool that takes the next port by itself says enough.
    runtime.drifts = true;
    attempt.commandKey = 2;
    machine.isServerRunning = true;
    start();
    listenOn(3001);
    EXPECT_THAT(pass(BootTime(5000)), ElementsAre(3000));

    // Where nobody tells how it ended either, nothing is known.
    tracker = AttemptTracker(AttemptTracker::DeadSockets::unseen, AttemptTracker::Ends::unseen);
    start();
    end();
    EXPECT_THAT(pass(BootTime(500)), IsEmpty());
}

} // namespace
} // namespace zenlot
