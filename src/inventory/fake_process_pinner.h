// A ProcessPinner for tests, over plain values. Any thread may use it; `processes` and `others` are
// for the test, before others look.
//
//     FakeProcessPinner pinner;
//     pinner.processes[42] = {.startTime = 7, .ports = {3000}};
//     ...
//     EXPECT_EQ(pinner.killed(), std::vector<ProcessId>{42});
#pragma once

#include "inventory/force_quit.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

namespace zenlot {

struct FakePinnedState {
    std::optional<std::int64_t> startTime{1};
    std::optional<UserId> effectiveUid{currentUserId()};
    std::vector<std::uint16_t> ports{};
    std::optional<std::chrono::system_clock::time_point> startedAt{};
    bool isServiceManager{false};
    bool hasEnded{false};
    bool refusesSignals{false};
};

class FakeProcessPinner final : public ProcessPinner {
  public:
    std::map<ProcessId, FakePinnedState> processes;
    std::optional<FakePinnedState>
        others; // the processes with every other id; none: there are none

    // In their order, also those that refused the signal.
    std::vector<ProcessId> killed() const {
        const std::lock_guard lock(mutex_);
        return killed_;
    }

    // Replaces the process, or lets it start.
    void set(ProcessId pid, const FakePinnedState& state) {
        const std::lock_guard lock(mutex_);
        processes[pid] = state;
    }

    std::unique_ptr<PinnedProcess> pin(ProcessId pid) const override {
        const std::lock_guard lock(mutex_);
        const auto found = processes.find(pid);
        if (found == processes.end() && !others)
            return nullptr;
        return std::make_unique<Process>(*this, pid,
                                         found == processes.end() ? *others : found->second);
    }

  private:
    class Process final : public PinnedProcess {
      public:
        Process(const FakeProcessPinner& pinner, ProcessId pid, FakePinnedState state)
            : pinner_(pinner), pid_(pid), state_(std::move(state)) {}

        bool hasEnded() const override { return state_.hasEnded; }
        std::optional<UserId> effectiveUid() const override { return state_.effectiveUid; }
        std::optional<std::int64_t> startTime() const override { return state_.startTime; }
        std::optional<std::chrono::system_clock::time_point> startedAt() const override {
            return state_.startedAt;
        }
        bool isServiceManager() const override { return state_.isServiceManager; }
        bool listensOn(std::uint16_t port) const override {
            return std::ranges::count(state_.ports, port) > 0;
        }
        bool kill() override {
            const std::lock_guard lock(pinner_.mutex_);
            pinner_.killed_.push_back(pid_);
            return !state_.refusesSignals;
        }

      private:
        const FakeProcessPinner& pinner_;
        ProcessId pid_;
        FakePinnedState state_;
    };

    mutable std::mutex mutex_;
    mutable std::vector<ProcessId> killed_;
};

} // namespace zenlot
