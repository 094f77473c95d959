#include "inventory/force_quit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

constexpr UserId kMe = 501;

class MockProcess : public PinnedProcess {
  public:
    MOCK_METHOD(std::optional<UserId>, effectiveUid, (), (const override));
    MOCK_METHOD(bool, kill, (), (override));
};

class MockPinner : public ProcessPinner {
  public:
    MOCK_METHOD(std::unique_ptr<PinnedProcess>, pin, (ProcessId), (const override));
};

TEST(ForceQuitTest, SignalsOnlyWhatBelongsToTheUser) {
    for (const std::optional<UserId> owner : {std::optional(kMe), std::optional(0U), {}}) {
        for (const bool isDelivered : {true, false}) {
            auto process = std::make_unique<testing::NiceMock<MockProcess>>();
            ON_CALL(*process, effectiveUid).WillByDefault(testing::Return(owner));
            ON_CALL(*process, kill).WillByDefault(testing::Return(isDelivered));
            EXPECT_CALL(*process, kill).Times(owner == kMe ? 1 : 0);
            MockPinner pinner;
            EXPECT_CALL(pinner, pin(42)).WillOnce(testing::Return(std::move(process)));
            EXPECT_EQ(forceQuitProcess(pinner, 42, kMe), isDelivered && owner == kMe);
        }
    }
}

TEST(ForceQuitTest, RefusesNumbersThatAreNoProcess) {
    testing::NiceMock<MockPinner> pinner; // knows no process
    EXPECT_FALSE(forceQuitProcess(pinner, 43, kMe));
    EXPECT_CALL(pinner, pin).Times(0);
    for (const std::int64_t pid : {0L, -42L, (1L << 32) + 42, 1L << 31})
        EXPECT_FALSE(forceQuitProcess(pinner, pid, kMe)) << pid;
}

} // namespace
} // namespace zenlot
