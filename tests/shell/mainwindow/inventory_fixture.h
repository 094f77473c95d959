// A whole inventory over fake tables, whose answers to a lookup can be held back, with the view
// model of the main window over it.
#pragma once

#include "inventory/origin/fake_managers.h"
#include "inventory/origin/fake_origin_sources.h"
#include "platform/fake_app_service.h"
#include "platform/fake_property_list.h"
#include "platform/fake_running_applications.h"
#include "platform/fake_user_defaults.h"
#include "shell/mainwindow/content_view_model.h"
#include "support/steered_tables.h"

namespace zenlot {

// Ends processes of the fake tables.
class FakePinner final : public ProcessPinner {
  public:
    explicit FakePinner(SteeredTables& tables) : tables_(tables) {}

    std::unique_ptr<PinnedProcess> pin(ProcessId pid) const override {
        std::optional<FakeProcess> process = tables_.process(pid);
        return process ? std::make_unique<Process>(tables_, *std::move(process)) : nullptr;
    }

  private:
    class Process final : public PinnedProcess {
      public:
        Process(SteeredTables& tables, FakeProcess process)
            : tables_(tables), process_(std::move(process)) {}
        bool hasEnded() const override { return false; }
        std::optional<UserId> effectiveUid() const override { return process_.realUid; }
        std::optional<std::int64_t> startTime() const override { return 1; }
        std::optional<std::chrono::system_clock::time_point> startedAt() const override {
            return std::nullopt;
        }
        bool isServiceManager() const override { return process_.executablePath == "/systemd"; }
        bool listensOn(std::uint16_t port) const override {
            return process_.sockets.front().localPort == port;
        }
        bool kill() override {
            tables_.end(process_.pid);
            return true;
        }

      private:
        SteeredTables& tables_;
        FakeProcess process_;
    };

    SteeredTables& tables_;
};

struct MainWindowFixture {
    SteeredTables tables;
    SharedPortCache cache;
    FakePinner processes{tables};
    PortScanner scanner{tables, [](std::uint16_t, AddressFamily) { return false; }};
    FakeOriginSources originSources;
    OriginCollector origins{originSources};
    PortInventory inventory{scanner, cache, processes, nullptr, &origins};
    FakeManagers managers;
    PortStopper stopper{{originSources, origins, managers, managers, managers},
                        [](std::chrono::milliseconds) {}};
    NotificationCenter notifications;
    FakeRunningApplications applications;
    FakePropertyListReader propertyLists;
    BundleKeyCache bundleKeys{propertyLists};
    ApplicationCache applicationCache{applications};
    AppModel appModel;
    FakeUserDefaults userDefaults;
    FakeAppService loginItem;
    AppSettings settings{userDefaults, loginItem};
    int onboardingShown{0};
    std::chrono::steady_clock::time_point now{std::chrono::hours(1)};
    ContentViewModel model{{inventory, notifications, applicationCache, bundleKeys, appModel,
                            settings, userDefaults, &stopper},
                           {{}, [this] { ++onboardingShown; }},
                           nullptr,
                           [this] { return now; }};
};

} // namespace zenlot
