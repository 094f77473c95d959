#include "inventory/darwin/darwin_process_inspector.h"
#include "inventory/darwin/fake_darwin_calls.h"
#include "inventory/darwin/kernel_bytes.h"
#include "inventory/darwin/process_records.h"

#include <gtest/gtest.h>

#include <array>

namespace zenlot {
namespace {

using namespace test;
using std::chrono::milliseconds;
using std::chrono::seconds;

class DarwinProcessInspectorTest : public testing::Test {
  protected:
    FakeDarwinCalls calls;
    const DarwinProcessInspector inspector{calls};
};

TEST_F(DarwinProcessInspectorTest, ReadsAProcess) {
    calls.timebase = timebase(125, 3);
    calls.memorySize.contents.resize(8);
    put(calls.memorySize.contents, 0, std::uint64_t{16} << 30);
    EXPECT_EQ(inspector.physicalMemoryBytes(), std::uint64_t{16} << 30);
    calls.processes[1].path = "/sbin/launchd";
    FakeDarwinProcess& process = calls.processes[7];
    process.taskAllInfo = taskAllInfo({.parent = 1,
                                       .status = 3,
                                       .startSeconds = 1'700'000'000,
                                       .virtualBytes = std::uint64_t{400} << 30,
                                       .residentBytes = 1'048'576,
                                       .userTime = 24'000'000,
                                       .systemTime = 48'000'000});
    process.descriptors = joined({descriptor(0, 1), descriptor(4), descriptor(3), descriptor(5)});
    process.sockets[3] = socketInfo({.localPort = 3000, .family = 30, .foreignPort = 0});
    process.sockets[4] = socketInfo({.localPort = 3000, .state = 4, .foreignPort = 52000});
    process.sockets[5] = socketInfo({.kind = 1});
    EXPECT_EQ(inspector.inspect(7),
              (ProcessFacts{TaskInfo{1, ProcessState::sleeping, seconds(1'700'000'000),
                                     std::uint64_t{400} << 30, 1'048'576, milliseconds(3000)},
                            "/sbin/launchd",
                            4,
                            {{AddressFamily::ipv4, TcpState::established, 3000, 52000},
                             {AddressFamily::ipv6, TcpState::listen, 3000, 0}}}));
}

TEST_F(DarwinProcessInspectorTest, EachQuestionMayFailForItself) {
    EXPECT_EQ(inspector.inspect(7), ProcessFacts());
    EXPECT_EQ(inspector.physicalMemoryBytes(), 0U);
    calls.processes[7].descriptors = joined({descriptor(0, 1), descriptor(1, 5)});
    EXPECT_EQ(inspector.inspect(7).descriptorCount, 2);
    EXPECT_FALSE(inspector.inspect(7).task);

    calls.processes[7].taskAllInfo = taskAllInfo({.parent = 99});
    const ProcessFacts facts = inspector.inspect(7);
    EXPECT_EQ(facts.task, (TaskInfo{99, ProcessState::unknown, seconds(0), 0, 0, std::nullopt}))
        << "no clock, no CPU time";
    EXPECT_EQ(facts.parentExecutablePath, "");
}

TEST_F(DarwinProcessInspectorTest, CountsTheWholeDescriptorsThatWereReturned) {
    FakeDarwinProcess& process = calls.processes[7];
    process.descriptors = joined({descriptor(0, 1), descriptor(1, 1), descriptor(2, 1)});
    const std::array<int, 3> cases[]{{0, 24, 0}, {-1, 24, 0}, {7, 7, 0},   {24, 24, 3}, {24, 23, 2},
                                     {24, 7, 0}, {24, -1, 0}, {15, 15, 1}, {16, 999, 2}};
    for (const auto& [announced, claimed, expected] : cases) {
        process.announcedDescriptors = announced;
        process.claimedDescriptors = claimed;
        EXPECT_EQ(inspector.inspect(7).descriptorCount, expected) << announced << ' ' << claimed;
    }
}

TEST(TaskInfoTest, NumbersOfStates) {
    const ProcessState states[]{ProcessState::unknown,  ProcessState::beingCreated,
                                ProcessState::runnable, ProcessState::sleeping,
                                ProcessState::stopped,  ProcessState::zombie,
                                ProcessState::unknown};
    for (std::uint32_t number = 0; number < std::size(states); ++number)
        EXPECT_EQ(decodeTaskInfo(taskAllInfo({.status = number}))->state, states[number]) << number;
    EXPECT_EQ(decodeTaskInfo(taskAllInfo({.startSeconds = ~0ULL}))->startTime, seconds::max());
}

TEST(TaskInfoTest, CpuTimeNeedsAClockThatMakesSense) {
    const Bytes info = taskAllInfo({.userTime = 1'999'999, .systemTime = 0});
    EXPECT_EQ(decodeCpuTime(info, timebase(1, 1)), milliseconds(1));
    EXPECT_EQ(decodeCpuTime(info, timebase(0, 1)), std::nullopt);
    EXPECT_EQ(decodeCpuTime(info, timebase(1, 0)), std::nullopt);
    const Bytes huge = taskAllInfo({.userTime = ~0ULL, .systemTime = ~0ULL});
    EXPECT_GT(decodeCpuTime(huge, timebase(~0U, 1)), milliseconds(0));
    for (const std::size_t size : {0U, 231U}) {
        EXPECT_FALSE(decodeTaskInfo(std::span(info).first(size)));
        EXPECT_FALSE(decodeCpuTime(std::span(info).first(size), timebase(1, 1)));
    }
}

} // namespace
} // namespace zenlot
