// The tables of a machine that changes while it is asked: a snapshot is of the moment at which it
// was taken, and takes until the test lets it go, if the test wants that. Any thread may ask.
#pragma once

#include "inventory/fake_process_tables.h"

#include <algorithm>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <semaphore>
#include <set>

namespace zenlot {

class SteeredTables final : public ProcessTables {
  public:
    using Port = std::optional<std::int64_t>; // none: all ports

    mutable std::counting_semaphore<> snapshotsTaken{0};

    // A process that listens on one port.
    void addListener(std::uint16_t port, ProcessId pid, UserId user, const std::string& path) {
        const std::lock_guard lock(mutex_);
        processes_.push_back({pid, {{AddressFamily::ipv4, TcpState::listen, port, 0}}, user, path});
    }
    void end(ProcessId pid) {
        const std::lock_guard lock(mutex_);
        std::erase_if(processes_, [pid](const FakeProcess& process) { return process.pid == pid; });
    }
    std::optional<FakeProcess> process(ProcessId pid) const {
        const std::lock_guard lock(mutex_);
        const auto found = std::ranges::find(processes_, pid, &FakeProcess::pid);
        return found == processes_.end() ? std::nullopt : std::optional(*found);
    }

    int lookups(Port port) const {
        const std::lock_guard lock(mutex_);
        return lookups_[port];
    }

    // The next snapshot for the port takes until it is let go.
    void holdNext(Port port = {}) {
        const std::lock_guard lock(mutex_);
        wanted_.insert(port);
    }
    bool isHolding() const {
        const std::lock_guard lock(mutex_);
        return isHolding_;
    }
    void letGo() {
        const std::lock_guard lock(mutex_);
        wanted_.clear();
        isHolding_ = false;
        letGo_.notify_all();
    }

    std::unique_ptr<ProcessSnapshot> beginSnapshot(Port port) const override {
        std::unique_lock lock(mutex_);
        FakeProcessTables& moment = *moments_.emplace_back(std::make_unique<FakeProcessTables>());
        moment.processes = processes_;
        for (const FakeProcess& process : processes_)
            moment.table.push_back(
                {process.sockets[0].localPort, 0, AddressFamily::ipv4, *process.realUid});
        ++lookups_[port];
        snapshotsTaken.release();
        if (wanted_.erase(port) != 0) {
            isHolding_ = true;
            letGo_.wait(lock, [this] { return !isHolding_; });
        }
        return moment.beginSnapshot(port);
    }

  private:
    mutable std::mutex mutex_;
    mutable std::condition_variable letGo_;
    mutable std::map<Port, int> lookups_;
    mutable std::set<Port> wanted_;
    mutable bool isHolding_{false};
    mutable std::vector<std::unique_ptr<FakeProcessTables>> moments_;
    std::vector<FakeProcess> processes_;
};

} // namespace zenlot
