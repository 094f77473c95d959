#include "inventory/force_quit.h"

#include <gtest/gtest.h>

#include <vector>

namespace zenlot {
namespace {

constexpr UserId kMe = 501;

// One process, number 42; remembers what was sent to it.
class FakePinner final : public ProcessPinner {
  public:
    std::optional<UserId> effectiveUid = kMe;
    bool signalIsRefused = false;
    mutable int kills = 0;

    std::unique_ptr<PinnedProcess> pin(ProcessId pid) const override {
        return pid == 42 ? std::make_unique<Process>(*this) : nullptr;
    }

  private:
    class Process final : public PinnedProcess {
      public:
        explicit Process(const FakePinner& pinner) : pinner_(pinner) {}
        std::optional<UserId> effectiveUid() const override { return pinner_.effectiveUid; }
        bool kill() override {
            ++pinner_.kills;
            return !pinner_.signalIsRefused;
        }

      private:
        const FakePinner& pinner_;
    };
};

TEST(ForceQuitTest, SignalsOnlyWhatBelongsToTheUser) {
    FakePinner pinner;
    EXPECT_TRUE(forceQuitProcess(pinner, 42, kMe));
    EXPECT_EQ(pinner.kills, 1);
    pinner.effectiveUid = 0; // a set-user-id program of the same person
    EXPECT_FALSE(forceQuitProcess(pinner, 42, kMe));
    pinner.effectiveUid.reset();
    EXPECT_FALSE(forceQuitProcess(pinner, 42, kMe));
    EXPECT_EQ(pinner.kills, 1);
    pinner.effectiveUid = kMe;
    pinner.signalIsRefused = true;
    EXPECT_FALSE(forceQuitProcess(pinner, 42, kMe));
}

TEST(ForceQuitTest, RefusesNumbersThatAreNoProcess) {
    const FakePinner pinner;
    for (const std::int64_t pid :
         {std::int64_t{43}, std::int64_t{0}, std::int64_t{-1}, std::int64_t{-42},
          (std::int64_t{1} << 32) + 42, std::int64_t{1} << 31})
        EXPECT_FALSE(forceQuitProcess(pinner, pid, kMe)) << pid;
    EXPECT_EQ(pinner.kills, 0);
}

} // namespace
} // namespace zenlot
