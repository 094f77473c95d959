// A whole inventory over fake tables, whose answers to a lookup can be held back, with the view
// model of the main window over it.
#pragma once

#include "inventory/fake_process_tables.h"
#include "platform/fake_app_service.h"
#include "platform/fake_property_list.h"
#include "platform/fake_running_applications.h"
#include "platform/fake_user_defaults.h"
#include "shell/mainwindow/content_view_model.h"

#include <algorithm>
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
        const std::lock_guard lock(mutex_);
        tables.table.push_back({port, 0, AddressFamily::ipv4, user});
        tables.processes.push_back(
            {pid, {{AddressFamily::ipv4, TcpState::listen, port, 0}}, user, path, ++starts_});
    }

    std::optional<FakeProcess> process(ProcessId pid) const {
        const std::lock_guard lock(mutex_);
        const auto found = std::ranges::find(tables.processes, pid, &FakeProcess::pid);
        return found == tables.processes.end() ? std::nullopt : std::optional(*found);
    }

    void removeProcess(ProcessId pid) {
        const std::lock_guard lock(mutex_);
        std::erase_if(tables.processes,
                      [pid](const FakeProcess& process) { return process.pid == pid; });
        tables.table.clear();
        for (const FakeProcess& process : tables.processes)
            tables.table.push_back({process.sockets[0].localPort, 0, AddressFamily::ipv4, 0});
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

    // The next list of all ports is that of this moment, and takes until it is let go.
    void holdNextList() { setHold(ListHold::wanted); }
    void letListGo() { setHold(ListHold::none); }
    bool isListHeld() {
        const std::lock_guard lock(mutex_);
        return listHold_ == ListHold::held;
    }

    int lookups(std::int64_t port) {
        const std::lock_guard lock(mutex_);
        return lookups_[port];
    }

    std::unique_ptr<ProcessSnapshot>
    beginSnapshot(std::optional<std::int64_t> port) const override {
        std::unique_lock lock(mutex_);
        if (port) {
            ++lookups_[*port];
            opened_.wait(lock, [&] { return !closed_.contains(*port); });
        } else if (listHold_ == ListHold::wanted) {
            listHold_ = ListHold::held;
            before_ = std::make_unique<FakeProcessTables>();
            before_->table = tables.table;
            before_->processes = tables.processes;
            opened_.wait(lock, [&] { return listHold_ == ListHold::none; });
            return before_->beginSnapshot(port);
        }
        return tables.beginSnapshot(port);
    }

  private:
    enum class ListHold : std::uint8_t { none, wanted, held };

    void setHold(ListHold hold) {
        const std::lock_guard lock(mutex_);
        listHold_ = hold;
        opened_.notify_all();
    }

    mutable std::mutex mutex_;
    mutable std::condition_variable opened_;
    mutable std::map<std::int64_t, int> lookups_;
    std::set<std::int64_t> closed_;
    mutable ListHold listHold_{ListHold::none};
    mutable std::unique_ptr<FakeProcessTables> before_;
    std::int64_t starts_{0};
};

// Ends processes of the fake tables.
class FakePinner final : public ProcessPinner {
  public:
    explicit FakePinner(GatedTables& tables) : tables_(tables) {}

    std::unique_ptr<PinnedProcess> pin(ProcessId pid) const override {
        std::optional<FakeProcess> process = tables_.process(pid);
        return process ? std::make_unique<Process>(tables_, *std::move(process)) : nullptr;
    }

  private:
    class Process final : public PinnedProcess {
      public:
        Process(GatedTables& tables, FakeProcess process)
            : tables_(tables), process_(std::move(process)) {}
        bool hasEnded() const override { return false; }
        std::optional<UserId> effectiveUid() const override { return process_.realUid; }
        std::optional<std::int64_t> startTime() const override { return process_.startTime; }
        std::optional<std::chrono::system_clock::time_point> startedAt() const override {
            return std::nullopt;
        }
        bool isServiceManager() const override { return process_.executablePath == "/systemd"; }
        bool listensOn(std::uint16_t port) const override {
            return process_.sockets.front().localPort == port;
        }
        bool kill() override {
            tables_.removeProcess(process_.pid);
            return true;
        }

      private:
        GatedTables& tables_;
        FakeProcess process_;
    };

    GatedTables& tables_;
};

struct MainWindowFixture {
    GatedTables tables;
    SharedPortCache cache;
    FakePinner processes{tables};
    PortScanner scanner{tables, [](std::uint16_t, AddressFamily) { return false; }};
    PortInventory inventory{scanner, cache, processes};
    NotificationCenter notifications;
    FakeRunningApplications applications;
    FakePropertyListReader propertyLists;
    BundleKeyCache bundleKeys{propertyLists};
    AppModel appModel;
    FakeUserDefaults userDefaults;
    FakeAppService loginItem;
    AppSettings settings{userDefaults, loginItem};
    int onboardingShown{0};
    ContentViewModel model{
        {inventory, notifications, applications, bundleKeys, appModel, settings, userDefaults},
        {{}, [this] { ++onboardingShown; }}};
};

} // namespace zenlot
