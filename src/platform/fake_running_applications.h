// RunningApplications for tests: those that a test names. Safe from any thread.
#pragma once

#include "platform/running_applications.h"

#include <map>
#include <mutex>
#include <utility>

namespace zenlot {

class FakeRunningApplications final : public RunningApplications {
  public:
    void add(qint64 pid, RunningApplication application) {
        const std::scoped_lock lock(mutex_);
        applications_.insert_or_assign(pid, std::move(application));
    }

    void remove(qint64 pid) {
        const std::scoped_lock lock(mutex_);
        applications_.erase(pid);
    }

    std::optional<RunningApplication> applicationWithPid(qint64 pid) const override {
        const std::scoped_lock lock(mutex_);
        const auto found = applications_.find(pid);
        return found == applications_.end() ? std::nullopt : std::optional(found->second);
    }

    // The process is a part of it.
    void addPart(qint64 pid, OwningApplication application) {
        const std::scoped_lock lock(mutex_);
        owners_.insert_or_assign(pid, std::move(application));
    }

    std::optional<OwningApplication> applicationOwning(qint64 pid) const override {
        const std::scoped_lock lock(mutex_);
        const auto found = owners_.find(pid);
        return found == owners_.end() ? std::nullopt : std::optional(found->second);
    }

  private:
    mutable std::mutex mutex_;
    std::map<qint64, RunningApplication> applications_;
    std::map<qint64, OwningApplication> owners_;
};

} // namespace zenlot
