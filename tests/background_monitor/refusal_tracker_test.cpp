// Which refused binds are told: stories of programs, as the kernel tells them.
#include "background_monitor/fake_port_holders.h"
#include "background_monitor/refusal_tracker.h"
#include "bindwatch/bind_events.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <sstream>

namespace zenlot {
namespace {

constexpr std::uint32_t kAsker = 100;
constexpr std::uint32_t kChildOfAsker = 101;

struct Step {
    std::int64_t at; // milliseconds
    BindKind kind;
    std::uint16_t port{0};
    std::uint32_t process{kAsker};
    std::uint8_t flags{0};
    std::int32_t error{0};
};

class RefusalTrackerTest : public testing::Test {
  protected:
    RefusalTrackerTest() {
        HolderAnswer another{HolderAnswer::Kind::another, {}};
        another.holder.pid = 50;
        for (const std::uint16_t port :
             std::initializer_list<std::uint16_t>{3000, 3001, 3002, 8080})
            holders.answers[port] = another;
    }

    BindEvent eventOf(const Step& step) const {
        BindEvent event =
            bindEvent(step.kind, step.process, step.port, static_cast<std::uint64_t>(step.at));
        event.error = step.kind == ZENLOT_BIND_REFUSED ? EADDRINUSE : step.error;
        event.flags = step.flags;
        event.parent = step.process == kChildOfAsker ? kAsker : parent;
        return event;
    }

    // A story is told in steps such as "10r3000": at 10 ms the process
    //   r  is refused the port       l  listens on it      e  ends
    //   b  binds it                  c  closes it again    E  ends with an error
    //   k  binds the one that the kernel chose             L  its child listens
    static std::vector<Step> stepsOf(const std::string& text) {
        const std::map<char, BindKind> kinds{
            {'r', ZENLOT_BIND_REFUSED},  {'b', ZENLOT_BOUND},        {'k', ZENLOT_BOUND},
            {'l', ZENLOT_LISTENING},     {'L', ZENLOT_LISTENING},    {'c', ZENLOT_LISTENER_ENDED},
            {'e', ZENLOT_PROCESS_ENDED}, {'E', ZENLOT_PROCESS_ENDED}};
        std::vector<Step> steps;
        std::istringstream words(text);
        Step step{};
        for (char letter = 0; words >> step.at >> letter;) {
            step.kind = kinds.at(letter);
            step.port = 0;
            step.error = letter == 'E' ? 256 : 0;
            if (step.kind != ZENLOT_PROCESS_ENDED)
                words >> step.port;
            step.process = letter == 'L' ? kChildOfAsker : kAsker;
            step.flags = letter == 'k' ? ZENLOT_KERNEL_CHOSEN : 0;
            steps.push_back(step);
        }
        return steps;
    }
    std::string story(const std::string& steps) { return story(stepsOf(steps)); }

    // What is told while the steps happen, and in the time after them: "310d3000", d for a drift,
    // g for a server that goes on, f for one that failed.
    std::string story(const std::vector<Step>& steps) {
        std::string told;
        std::int64_t until = 0;
        const auto look = [&](BootTime now) {
            for (const Verdict& verdict : tracker.look(now)) {
                const char kind = verdict.kind == Verdict::Kind::drift    ? 'd'
                                  : verdict.kind == Verdict::Kind::goesOn ? 'g'
                                                                          : 'f';
                told += (told.empty() ? "" : " ") + std::to_string(now.count()) + kind +
                        std::to_string(verdict.port);
            }
        };
        const auto lookUntil = [&](BootTime now) {
            for (auto next = tracker.nextLook(); next && *next < now; next = tracker.nextLook())
                look(*next);
        };
        for (const Step& step : steps) {
            lookUntil(BootTime(step.at));
            tracker.happened(eventOf(step), BootTime(step.at));
            look(BootTime(step.at));
            until = step.at + 5000;
        }
        lookUntil(BootTime(until));
        return told;
    }

    FakePortHolders holders;
    RefusalTracker tracker{holders};
    std::uint32_t parent{1};
};

constexpr auto kRefused = ZENLOT_BIND_REFUSED;
constexpr auto kListening = ZENLOT_LISTENING;

struct Story {
    const char* name;
    const char* steps;
    const char* told;
};

class StoriesTest : public RefusalTrackerTest, public testing::WithParamInterface<Story> {};

TEST_P(StoriesTest, AreTold) {
    EXPECT_EQ(story(GetParam().steps), GetParam().told);
}

const Story kServers[]{
    {"Ends", "10r3000 20e", "20f3000"},
    {"EndsLate", "10r3000 5000e", "310g3000"},
    {"TriesAgainEverySecond", "0r3000 1000r3000 2000r3000 90000r3000", "300g3000"},
    {"GetsItAfterAll", "0r3000 200b3000 201l3000", ""},
    {"TakesTheNext", "0r3000 5r3001 10b3003 10l3003", "310d3000"},
    {"LooksAndThenTakesIt", "0r3000 5b3003 6l3003 7c3003 100b3003 101l3003", "401d3000"},
    {"ComesBackAndGivesUp", "0r3000 1k40001 100r3000 500r3000 501E", "501f3000"},
    {"LooksOnlyToSayWhichIsFree", "0r3000 1l3003 2c3003 6E", "6f3000"},
    {"AsksThePersonFirst", "0r3000 5l3003 7c3003 9000l3003", "9300d3000"},
    {"ItsChildTakesTheNext", "0r3000 50L3003", "350d3000"},
    {"OpensAnotherServiceAndGivesUp", "0r3000 20l9000 100e 101c9000", "100f3000"},
    {"ClosesItsOtherServiceAtItsEnd", "0r3000 20l9000 90c9000 100e", "100f3000"},
    {"IsRefusedTwoPorts", "0r3000 1r8080 20e", "20f3000 20f8080"},
    {"FindsAllOfARowTaken", "0r3000 1r3001 2r3002 9e", "9f3000"},
};
const Story kSeekers[]{
    {"NamesTheNextFreeOneAndEnds", "0r3000 2b3003 2l3003 4c3003 9e", ""},
    {"TakesAnotherOfAList", "0r3000 2l5999 4c5999 9e", ""},
    {"BindsOnly", "0r3000 2b3003 9e", ""},
    {"LetsTheKernelChoose", "0r3000 2k50000 3l50000 4c50000 9e", ""},
    {"LooksIntoAListOfPorts", "0b5173 1r3000 2l7000 3c7000 4r8080 5l6000 6c6000", ""},
    {"IsATestThatFails", "0r3000 1k50000 2l50000 4c50000 9E", ""},
    {"IsRefusedByItself", "0r7777 10e", ""},
};
constexpr auto kNameOfStory = [](const auto& story) { return story.param.name; };
INSTANTIATE_TEST_SUITE_P(Servers, StoriesTest, testing::ValuesIn(kServers), kNameOfStory);
INSTANTIATE_TEST_SUITE_P(Seekers, StoriesTest, testing::ValuesIn(kSeekers), kNameOfStory);

TEST_F(RefusalTrackerTest, WhatItsOwnFamilyHoldsIsNoConflict) {
    holders.answers[3000].kind = HolderAnswer::Kind::own;
    EXPECT_EQ(story("0r3000 10e"), "");
}

// Some servers look which port is free only to say so, and give up.
TEST_F(RefusalTrackerTest, AKnownServerThatLooksForAnotherPortWantedThisOne) {
    holders.knownToWant[kAsker] = 3000;
    EXPECT_EQ(story("0r3000 2b3003 9e"), "9f3000");
}

TEST_F(RefusalTrackerTest, MissingPermissionIsNoConflict) {
    BindEvent event = eventOf({0, kRefused, 3000});
    event.error = EACCES;
    tracker.happened(event, BootTime(0));
    EXPECT_FALSE(tracker.nextLook());
    EXPECT_EQ(holders.questions, 0);
}

// The half of a port that was had counts, when it is another half than the one that was refused.
TEST_F(RefusalTrackerTest, AnotherFamilyOfThePortIsNotThePort) {
    tracker.happened(eventOf({0, kRefused, 3000}), BootTime(0));
    BindEvent got = eventOf({1, kListening, 3000});
    got.family = 6;
    got.flags = ZENLOT_V6_ONLY;
    tracker.happened(got, BootTime(1));
    EXPECT_EQ(tracker.look(BootTime(301)).size(), 1U);
}

TEST_F(RefusalTrackerTest, ALoopIsToldOnceAndPeopleEachTime) {
    const auto restart = [this](std::uint32_t process, std::int64_t at) {
        holders.commandKeys[static_cast<ProcessId>(process)] = 7;
        return !story({{at, kRefused, 3000, process}, {at + 5, ZENLOT_PROCESS_ENDED, 0, process}})
                    .empty();
    };
    parent = 9;
    EXPECT_TRUE(restart(200, 0));
    EXPECT_FALSE(restart(201, 8'000)) << "its watcher started it again";
    holders.shells.insert(9);
    EXPECT_TRUE(restart(202, 20'000)) << "somebody typed it again";
    EXPECT_FALSE(restart(203, 21'000)) << "faster than people";
    holders.answers[3000].holder.pid = 51;
    EXPECT_TRUE(restart(204, 22'000)) << "somebody else has it now";
}

TEST_F(RefusalTrackerTest, KnowsOfWhatItWasToldForAMinute) {
    story("0r3000 2b3003 9e");
    EXPECT_TRUE(tracker.knows(3000, BootTime(1000)));
    EXPECT_TRUE(tracker.knows(3000, BootTime(1000), kAsker));
    EXPECT_FALSE(tracker.knows(3000, BootTime(1000), kChildOfAsker));
    EXPECT_FALSE(tracker.knows(3003, BootTime(1000)));
    EXPECT_FALSE(tracker.knows(3000, BootTime(61'000)));
}

TEST_F(RefusalTrackerTest, AFloodIsBounded) {
    for (std::uint32_t process = 1000; process < 11'000; ++process)
        tracker.happened(eventOf({0, kRefused, 3000, process}), BootTime(0));
    for (std::uint16_t port = 1; port < 60'000; ++port)
        tracker.happened(eventOf({0, kRefused, port, 20'000}), BootTime(0));
    EXPECT_LE(holders.questions, RefusalTracker::kMostQuestionsPerSecond);
    EXPECT_LE(tracker.look(BootTime(1000)).size(), std::size_t{64});
}

} // namespace
} // namespace zenlot
