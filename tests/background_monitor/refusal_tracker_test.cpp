// Which refused binds are told: stories of programs, as the kernel tells them.
#include "background_monitor/fake_port_holders.h"
#include "background_monitor/refusal_tracker.h"
#include "bindwatch/bind_events.h"

#include <gmock/gmock.h>

#include <cerrno>

namespace zenlot {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

struct Told {
    std::int64_t at;
    std::uint16_t port;
    Verdict::Kind kind;

    friend bool operator==(const Told&, const Told&) = default;
    friend std::ostream& operator<<(std::ostream& out, const Told& told) {
        return out << told.port << " at " << told.at << " as " << static_cast<int>(told.kind);
    }
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

    // What is told while the steps happen, and in the time after them.
    std::vector<Told> story(const std::vector<Step>& steps, std::int64_t until = 0) {
        std::vector<Told> told;
        const auto look = [&](BootTime now) {
            for (const Verdict& verdict : tracker.look(now))
                told.push_back({now.count(), verdict.port, verdict.kind});
        };
        const auto lookUntil = [&](BootTime now) {
            for (auto next = tracker.nextLook(); next && *next < now; next = tracker.nextLook())
                look(*next);
        };
        for (const Step& step : steps) {
            lookUntil(BootTime(step.at));
            tracker.happened(eventOf(step), BootTime(step.at));
            look(BootTime(step.at));
            until = std::max(until, step.at + 5000);
        }
        lookUntil(BootTime(until));
        return told;
    }

    FakePortHolders holders;
    RefusalTracker tracker{holders};
    std::uint32_t parent{1};
};

constexpr auto kRefused = ZENLOT_BIND_REFUSED;
constexpr auto kBound = ZENLOT_BOUND;
constexpr auto kListening = ZENLOT_LISTENING;
constexpr auto kClosed = ZENLOT_LISTENER_ENDED;
constexpr auto kEnded = ZENLOT_PROCESS_ENDED;

struct Story {
    const char* name;
    std::vector<Step> steps;
    std::vector<Told> told;
};

class StoriesTest : public RefusalTrackerTest, public testing::WithParamInterface<Story> {};

TEST_P(StoriesTest, AreTold) {
    EXPECT_EQ(story(GetParam().steps), GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(
    Servers, StoriesTest,
    testing::Values(
        Story{
            "Ends", {{10, kRefused, 3000}, {20, kEnded}}, {{20, 3000, Verdict::Kind::failedStart}}},
        Story{"EndsLate",
              {{10, kRefused, 3000}, {5000, kEnded}},
              {{310, 3000, Verdict::Kind::goesOn}}},
        Story{"TriesAgainEverySecond",
              {{0, kRefused, 3000},
               {1000, kRefused, 3000},
               {2000, kRefused, 3000},
               {90'000, kRefused, 3000}},
              {{300, 3000, Verdict::Kind::goesOn}}},
        Story{"GetsItAfterAll",
              {{0, kRefused, 3000}, {200, kBound, 3000}, {201, kListening, 3000}},
              {}},
        Story{
            "TakesTheNext",
            {{0, kRefused, 3000}, {5, kRefused, 3001}, {10, kBound, 3003}, {10, kListening, 3003}},
            {{310, 3000, Verdict::Kind::drift}}},
        Story{"LooksAndThenTakesIt",
              {{0, kRefused, 3000},
               {5, kBound, 3003},
               {6, kListening, 3003},
               {7, kClosed, 3003},
               {100, kBound, 3003},
               {101, kListening, 3003}},
              {{401, 3000, Verdict::Kind::drift}}},
        Story{"ComesBackAndGivesUp",
              {{0, kRefused, 3000},
               {1, kBound, 40'001, kAsker, ZENLOT_KERNEL_CHOSEN},
               {100, kRefused, 3000},
               {500, kRefused, 3000},
               {501, kEnded, 0, kAsker, 0, 6}},
              {{501, 3000, Verdict::Kind::failedStart}}},
        Story{"LooksOnlyToSayWhichIsFree",
              {{0, kRefused, 3000},
               {1, kListening, 3003},
               {2, kClosed, 3003},
               {6, kEnded, 0, kAsker, 0, 256}},
              {{6, 3000, Verdict::Kind::failedStart}}},
        Story{"AsksThePersonFirst",
              {{0, kRefused, 3000},
               {5, kListening, 3003},
               {7, kClosed, 3003},
               {9000, kListening, 3003}},
              {{9300, 3000, Verdict::Kind::drift}}},
        Story{"ItsChildTakesTheNext",
              {{0, kRefused, 3000}, {50, kListening, 3003, kChildOfAsker}},
              {{350, 3000, Verdict::Kind::drift}}},
        Story{"OpensAnotherServiceAndGivesUp",
              {{0, kRefused, 3000}, {20, kListening, 9000}, {100, kEnded}, {101, kClosed, 9000}},
              {{100, 3000, Verdict::Kind::failedStart}}},
        Story{"ClosesItsOtherServiceAtItsEnd",
              {{0, kRefused, 3000}, {20, kListening, 9000}, {90, kClosed, 9000}, {100, kEnded}},
              {{100, 3000, Verdict::Kind::failedStart}}},
        Story{"IsRefusedTwoPorts",
              {{0, kRefused, 3000}, {1, kRefused, 8080}, {20, kEnded}},
              {{20, 3000, Verdict::Kind::failedStart}, {20, 8080, Verdict::Kind::failedStart}}},
        Story{"FindsAllOfARowTaken",
              {{0, kRefused, 3000}, {1, kRefused, 3001}, {2, kRefused, 3002}, {9, kEnded}},
              {{9, 3000, Verdict::Kind::failedStart}}}),
    [](const auto& story) { return story.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Seekers, StoriesTest,
    testing::Values(
        Story{"NamesTheNextFreeOneAndEnds",
              {{0, kRefused, 3000},
               {2, kBound, 3003},
               {2, kListening, 3003},
               {4, kClosed, 3003},
               {9, kEnded}},
              {}},
        Story{"TakesAnotherOfAList",
              {{0, kRefused, 3000}, {2, kListening, 5999}, {4, kClosed, 5999}, {9, kEnded}},
              {}},
        Story{"BindsOnly", {{0, kRefused, 3000}, {2, kBound, 3003}, {9, kEnded}}, {}},
        Story{"LetsTheKernelChoose",
              {{0, kRefused, 3000},
               {2, kBound, 50'000, kAsker, ZENLOT_KERNEL_CHOSEN},
               {3, kListening, 50'000},
               {4, kClosed, 50'000},
               {9, kEnded}},
              {}},
        Story{"LooksIntoAListOfPorts",
              {{0, kBound, 5173},
               {1, kRefused, 3000},
               {2, kListening, 7000},
               {3, kClosed, 7000},
               {4, kRefused, 8080},
               {5, kListening, 6000},
               {6, kClosed, 6000}},
              {}},
        Story{"IsRefusedByItself", {{0, kRefused, 7777}, {10, kEnded}}, {}}),
    [](const auto& story) { return story.param.name; });

TEST_F(RefusalTrackerTest, WhatItsOwnFamilyHoldsIsNoConflict) {
    holders.answers[3000].kind = HolderAnswer::Kind::own;
    EXPECT_THAT(story({{0, kRefused, 3000}, {10, kEnded}}), IsEmpty());
}

// Some servers look which port is free only to say so, and give up.
TEST_F(RefusalTrackerTest, AKnownServerThatLooksForAnotherPortWantedThisOne) {
    holders.knownToWant[kAsker] = 3000;
    EXPECT_THAT(story({{0, kRefused, 3000}, {2, kBound, 3003}, {9, kEnded}}),
                ElementsAre(Told{9, 3000, Verdict::Kind::failedStart}));
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
        return story({{at, kRefused, 3000, process}, {at + 5, kEnded, 0, process}}).size();
    };
    parent = 9;
    EXPECT_EQ(restart(200, 0), 1U);
    EXPECT_EQ(restart(201, 8'000), 0U) << "its watcher started it again";
    holders.shells.insert(9);
    EXPECT_EQ(restart(202, 20'000), 1U) << "somebody typed it again";
    EXPECT_EQ(restart(203, 21'000), 0U) << "faster than people";
    holders.answers[3000].holder.pid = 51;
    EXPECT_EQ(restart(204, 22'000), 1U) << "somebody else has it now";
}

TEST_F(RefusalTrackerTest, KnowsOfWhatItWasToldForAMinute) {
    story({{0, kRefused, 3000}, {2, kBound, 3003}, {9, kEnded}});
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
