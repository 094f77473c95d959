// An inventory over a machine that is made up, or over tables that a test brings; and what tells
// its user of conflicts, up to a desktop that shows nothing.
#pragma once

#include "inventory/fake_process_pinner.h"
#include "inventory/fake_process_tables.h"
#include "inventory/origin/fake_origin_sources.h"
#include "inventory/origin/origin_collector.h"
#include "monitoring/port_inventory.h"
#include "monitoring/port_notification_manager.h"
#include "platform/fake_process_end_watch.h"
#include "platform/fake_user_notification_center.h"
#include "support/sample_user.h"
#include "support/temporary_folder.h"

#include <chrono>
#include <memory>
#include <sstream>

namespace zenlot {

template <typename Tables = FakeProcessTables>
struct SampleInventory {
    Tables tables;
    FakeProcessPinner pinner;
    SharedPortCache cache;
    PortScanner scanner{tables, [](std::uint16_t, AddressFamily) { return false; }};
    FakeOriginSources originSources;
    OriginCollector origins{originSources};
    PortInventory inventory{scanner, cache, pinner, nullptr, &origins};
};

template <typename Tables = FakeProcessTables>
struct SampleAlerts : SampleInventory<Tables>, SampleUser {
    // What was logged since the last call, without times and tags.
    std::vector<std::string> logged() {
        log.settle();
        std::istringstream text(folder.read("app.log"));
        folder.write("app.log", "");
        std::vector<std::string> lines;
        for (std::string line; std::getline(text, line);)
            lines.push_back(line.substr(line.find("] ") + 2));
        return lines;
    }

    TemporaryFolder folder;
    const QString home = QString::fromStdString(folder.path().string()) + u'/';
    AppLog log{home + QStringLiteral("app.log")};
    NotificationCenter notifications;
    FakeUserNotificationCenter center;
    FakeProcessEndWatch processEnds;
    std::chrono::steady_clock::time_point now; // for the manager of the alerts
    std::unique_ptr<PortNotificationManager> alerts = std::make_unique<PortNotificationManager>(
        center, this->inventory, processEnds, notifications, log, [this] { return now; });
};

} // namespace zenlot
