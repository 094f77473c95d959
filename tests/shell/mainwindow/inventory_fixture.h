// A whole inventory over fake tables, whose answers to a lookup can be held back.
#pragma once

#include "inventory/fake_process_tables.h"
#include "monitoring/port_inventory.h"

#include <condition_variable>
#include <map>
#include <mutex>
#include <set>

namespace zenlot {

class GatedTables final : public ProcessTables {
  public:
    FakeProcessTables tables;

    // A listener of a process of its own.
    void addListener(std::uint16_t port, ProcessId pid, UserId user, const std::string& path) {
        tables.table.push_back({port, 0, AddressFamily::ipv4, user});
        tables.processes.push_back(
            {pid, {{AddressFamily::ipv4, TcpState::listen, port, 0}}, user, path});
    }

    // Lookups of the port take until it is opened again.
    void closeGate(std::int64_t port) {
        const std::lock_guard lock(mutex_);
        closed_.insert(port);
    }
    void openGate(std::int64_t port) {
        const std::lock_guard lock(mutex_);
        closed_.erase(port);
        opened_.notify_all();
    }

    int lookups(std::int64_t port) {
        const std::lock_guard lock(mutex_);
        return lookups_[port];
    }

    std::unique_ptr<ProcessSnapshot>
    beginSnapshot(std::optional<std::int64_t> port) const override {
        if (port) {
            std::unique_lock lock(mutex_);
            ++lookups_[*port];
            opened_.wait(lock, [&] { return !closed_.contains(*port); });
        }
        return tables.beginSnapshot(port);
    }

  private:
    mutable std::mutex mutex_;
    mutable std::condition_variable opened_;
    mutable std::map<std::int64_t, int> lookups_;
    std::set<std::int64_t> closed_;
};

struct InventoryFixture {
    class NoProcesses final : public ProcessPinner {
      public:
        std::unique_ptr<PinnedProcess> pin(ProcessId) const override { return nullptr; }
    };

    GatedTables tables;
    SharedPortCache cache;
    NoProcesses processes;
    PortScanner scanner{tables, [](std::uint16_t, AddressFamily) { return false; }};
    PortLookup lookup{scanner, cache};
    PortInventory inventory{scanner, lookup, cache, processes};
};

} // namespace zenlot
