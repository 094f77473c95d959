#include "inventory/darwin/darwin_process_pinner.h"
#include "inventory/darwin/fake_darwin_calls.h"
#include "inventory/darwin/kernel_bytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>

namespace zenlot {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr UserId kCurrentUser = 501;

TEST(DarwinProcessPinnerTest, OnlyAProcessWhoseEffectiveUserIsTheCurrentOneIsKilled) {
    FakeDarwinCalls calls;
    calls.processes[10].bsdInfo = test::bsdInfo(kCurrentUser, 0);
    calls.processes[11].bsdInfo = test::bsdInfo(0, kCurrentUser); // a set-user-id program
    calls.processes[12] = {};                                     // may not be inspected
    const DarwinProcessPinner pinner(calls);

    for (const std::int64_t pid : {11, 12, 13})
        EXPECT_FALSE(forceQuitProcess(pinner, pid, kCurrentUser)) << pid;
    EXPECT_THAT(calls.signals, IsEmpty());

    EXPECT_TRUE(forceQuitProcess(pinner, 10, kCurrentUser));
    EXPECT_THAT(calls.signals, ElementsAre(Pair(10, 9)));
    calls.killResult = -1;
    EXPECT_FALSE(forceQuitProcess(pinner, 10, kCurrentUser));
}

TEST(DarwinProcessPinnerTest, ProcessGroupsAreNeverSignalled) {
    FakeDarwinCalls calls;
    for (const ProcessId pid : {0, -1, -10}) {
        calls.processes[pid].bsdInfo = test::bsdInfo(kCurrentUser, kCurrentUser);
        EXPECT_EQ(DarwinProcessPinner(calls).pin(pid), nullptr) << pid;
    }
}

} // namespace
} // namespace zenlot
