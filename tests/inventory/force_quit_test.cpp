#include "inventory/fake_process_pinner.h"

#include <gmock/gmock.h>

#include <unistd.h>

namespace zenlot {
namespace {

using Obstacle = ForceQuitObstacle;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr UserId kMe = 501;
constexpr std::int64_t kStart = 7;
constexpr std::int64_t kHeld = 3000; // the port of the process in question

TEST(ForceQuitTest, SignalsOnlyTheProcessThatWasMeant) {
    struct Case {
        const char* what;
        std::int64_t pid;
        std::optional<std::int64_t> startTime;
        std::optional<std::int64_t> port;
        FakePinnedState found;
        Obstacle obstacle;
    };
    const FakePinnedState mine{.startTime = kStart, .effectiveUid = kMe, .ports = {kHeld}};
    const auto but = [mine](auto change) {
        FakePinnedState state = mine;
        change(state);
        return state;
    };
    const Case cases[] = {
        {"the same start", 42, kStart, {}, mine, Obstacle::none},
        {"the same start, without the port", 42, kStart, 4000, mine, Obstacle::none},
        {"another start", 42, kStart + 1, kHeld, mine, Obstacle::gone},
        {"an earlier start", 42, kStart - 1, {}, mine, Obstacle::gone},
        {"no start, but the port", 42, {}, kHeld, mine, Obstacle::none},
        {"no start, another port", 42, {}, 4000, mine, Obstacle::unknownOwner},
        {"no start, no port of any process", 42, {}, 65536 + kHeld, mine, Obstacle::unknownOwner},
        {"has ended", 42, kStart, kHeld, but([](auto& state) { state.hasEnded = true; }),
         Obstacle::gone},
        {"its start can't be read", 42, kStart, kHeld,
         but([](auto& state) { state.startTime.reset(); }), Obstacle::unknownOwner},
        {"its user can't be read", 42, kStart, kHeld,
         but([](auto& state) { state.effectiveUid.reset(); }), Obstacle::unknownOwner},
        {"root's", 42, kStart, kHeld, but([](auto& state) { state.effectiveUid = 0; }),
         Obstacle::anotherUser},
        {"a service manager", 42, kStart, kHeld,
         but([](auto& state) { state.isServiceManager = true; }), Obstacle::serviceManager},
        {"another user's service manager",
         42,
         {},
         kHeld,
         but([](auto& state) {
             state.isServiceManager = true;
             state.effectiveUid = 0;
         }),
         Obstacle::serviceManager},
        {"the init process", 1, kStart, kHeld, mine, Obstacle::initProcess},
        {"this program", ::getpid(), kStart, kHeld, mine, Obstacle::ownProcess},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        FakeProcessPinner pinner;
        pinner.processes[static_cast<ProcessId>(each.pid)] = each.found;
        const ForceQuitTarget target{{each.pid, each.startTime}, each.port};
        EXPECT_EQ(lookAtProcess(pinner, target, kMe).obstacle, each.obstacle);
        EXPECT_EQ(forceQuitProcess(pinner, target, kMe), each.obstacle == Obstacle::none);
        EXPECT_EQ(pinner.killed().size(), each.obstacle == Obstacle::none ? 1U : 0U);
    }
}

TEST(ForceQuitTest, TellsWhetherTheSignalWasDelivered) {
    FakeProcessPinner pinner;
    pinner.processes[42] = {.effectiveUid = kMe, .ports = {kHeld}, .refusesSignals = true};
    EXPECT_FALSE(forceQuitProcess(pinner, {{42, 1}}, kMe));
    EXPECT_THAT(pinner.killed(), ElementsAre(42));
}

// A look takes the start down. Without it, and without a port, nobody was meant.
TEST(ForceQuitTest, ALookFindsTheIdentityThatAKillNeeds) {
    FakeProcessPinner pinner;
    const std::chrono::system_clock::time_point noon{std::chrono::hours(12)};
    pinner.processes[42] = {.startTime = kStart, .effectiveUid = kMe, .startedAt = noon};
    const ProcessIdentity known{42, kStart};
    EXPECT_EQ(lookAtProcess(pinner, {{42}}, kMe), (ProcessSighting{known, Obstacle::none, noon}));
    EXPECT_EQ(lookAtProcess(pinner, {{42}, kHeld}, kMe),
              (ProcessSighting{{42}, Obstacle::unknownOwner}));
    EXPECT_FALSE(forceQuitProcess(pinner, {{42}}, kMe));
    EXPECT_THAT(pinner.killed(), IsEmpty());
    EXPECT_TRUE(forceQuitProcess(pinner, {known}, kMe));
}

TEST(ForceQuitTest, NumbersThatAreNoProcessAreNobody) {
    FakeProcessPinner pinner;
    pinner.others = FakePinnedState{.effectiveUid = kMe, .ports = {kHeld}};
    for (const std::int64_t pid : {0L, -42L, (1L << 32) + 42, 1L << 31}) {
        EXPECT_EQ(lookAtProcess(pinner, {{pid}, kHeld}, kMe).obstacle, Obstacle::unknownOwner)
            << pid;
        EXPECT_FALSE(forceQuitProcess(pinner, {{pid, 1}, kHeld}, kMe)) << pid;
    }
    EXPECT_THAT(pinner.killed(), IsEmpty());
    pinner.others.reset();
    EXPECT_EQ(lookAtProcess(pinner, {{43}, kHeld}, kMe).obstacle, Obstacle::gone);
}

} // namespace
} // namespace zenlot
