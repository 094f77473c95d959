// The background monitor's part, played by a test: conflicts in the shared folder, and broadcasts.
#pragma once

#include "e2e/private_desktop.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <nlohmann/json.hpp>

#include <chrono>
#include <vector>

namespace zenlot {

class StandInMonitor {
  public:
    explicit StandInMonitor(const PrivateDesktop& desktop) : desktop_(desktop) {}
    StandInMonitor(const StandInMonitor&) = delete;
    StandInMonitor& operator=(const StandInMonitor&) = delete;
    ~StandInMonitor() { QDBusConnection::disconnectFromBus(bus_.name()); }

    struct Conflict {
        int port;
        qint64 pid;
        QString processName;
        QString displayName;
    };

    // Another conflict in the list, of this moment.
    void addConflict(int port, qint64 pid, const QString& processName, const QString& displayName) {
        addConflicts({{port, pid, processName, displayName}});
    }
    // The same for several that come together.
    void addConflicts(const std::vector<Conflict>& conflicts) {
        using namespace std::chrono;
        const auto time = system_clock::now() - sys_days(2001y / January / 1);
        for (const Conflict& conflict : conflicts)
            conflicts_.push_back({{"port", conflict.port},
                                  {"pid", conflict.pid},
                                  {"processName", conflict.processName.toStdString()},
                                  {"displayName", conflict.displayName.toStdString()},
                                  {"detectedAt", duration<double>(time).count()}});
        const std::string name = "XDG_STATE_HOME/group.dev.quorvane.zenlot/conflicts.json";
        desktop_.files().write(name + ".new", conflicts_.dump());
        std::filesystem::rename(desktop_.folder() / (name + ".new"), desktop_.folder() / name);
    }
    std::size_t conflictCount() const { return conflicts_.size(); }

    void broadcast(const char* name) {
        bus_.send(QDBusMessage::createSignal(QStringLiteral("/dev/quorvane/zenlot/broadcast"),
                                             QStringLiteral("dev.quorvane.zenlot.Broadcast"),
                                             QStringLiteral("Posted"))
                  << QString::fromLatin1(name));
    }

  private:
    const PrivateDesktop& desktop_;
    nlohmann::json conflicts_ = nlohmann::json::array();
    QDBusConnection bus_ =
        QDBusConnection::connectToBus(desktop_.sessionBus(), QStringLiteral("e2e monitor"));
};

} // namespace zenlot
