// The user's preferences as the program uses them: loaded from the user defaults once, and written
// back whenever one is assigned.
//
// Assigning a property stores the value, tells observers when it differs from the one before, and
// then writes it, also when it is equal. `launchAtLogin` is not written: assigning it registers or
// unregisters the login item, and errors of that are dropped. Absent and ill-typed preferences keep
// their defaults; a list with one element of a wrong type counts as ill-typed as a whole.
//
// Loading assigns what it finds. In particular it registers the login item again when it is enabled
// and unregisters it otherwise.
//
// Lists keep the order that they were given. One instance serves the whole program; it belongs to
// the main thread.
//
//     AppSettings settings(defaults, loginItem);
//     settings.load();
//     settings.setMonitorIgnoredPorts({3000, 8080});
#pragma once

#include "platform/app_service.h"
#include "platform/user_defaults.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <cstdint>

namespace zenlot {

class AppSettings : public QObject {
    Q_OBJECT
    // Where the program appears.
    Q_PROPERTY(
        bool showInMenuBar READ showInMenuBar WRITE setShowInMenuBar NOTIFY showInMenuBarChanged)
    Q_PROPERTY(bool showInDock READ showInDock WRITE setShowInDock NOTIFY showInDockChanged)
    Q_PROPERTY(
        bool launchAtLogin READ launchAtLogin WRITE setLaunchAtLogin NOTIFY launchAtLoginChanged)
    Q_PROPERTY(bool globalShortcutEnabled READ globalShortcutEnabled WRITE setGlobalShortcutEnabled
                   NOTIFY globalShortcutEnabledChanged)
    // Alerts about new listeners, and about conflicts that the background monitor finds.
    Q_PROPERTY(bool portMonitoringEnabled READ portMonitoringEnabled WRITE setPortMonitoringEnabled
                   NOTIFY portMonitoringEnabledChanged)
    Q_PROPERTY(bool conflictMonitoringEnabled READ conflictMonitoringEnabled WRITE
                   setConflictMonitoringEnabled NOTIFY conflictMonitoringEnabledChanged)
    // Ports, and names of processes or applications, that are exempt from those alerts.
    Q_PROPERTY(QList<qint64> monitorIgnoredPorts READ monitorIgnoredPorts WRITE
                   setMonitorIgnoredPorts NOTIFY monitorIgnoredPortsChanged)
    Q_PROPERTY(QStringList monitorIgnoredApps READ monitorIgnoredApps WRITE setMonitorIgnoredApps
                   NOTIFY monitorIgnoredAppsChanged)
    Q_PROPERTY(QList<qint64> conflictIgnoredPorts READ conflictIgnoredPorts WRITE
                   setConflictIgnoredPorts NOTIFY conflictIgnoredPortsChanged)
    Q_PROPERTY(QStringList conflictIgnoredApps READ conflictIgnoredApps WRITE setConflictIgnoredApps
                   NOTIFY conflictIgnoredAppsChanged)
    Q_PROPERTY(bool hasCompletedOnboarding READ hasCompletedOnboarding WRITE
                   setHasCompletedOnboarding NOTIFY hasCompletedOnboardingChanged)

  public:
    // Both must outlive the settings.
    AppSettings(UserDefaults& defaults, AppService& loginItem, QObject* parent = nullptr);

    void load();

    bool showInMenuBar() const { return showInMenuBar_; }
    bool showInDock() const { return showInDock_; }
    bool launchAtLogin() const { return launchAtLogin_; }
    bool globalShortcutEnabled() const { return globalShortcutEnabled_; }
    bool portMonitoringEnabled() const { return portMonitoringEnabled_; }
    bool conflictMonitoringEnabled() const { return conflictMonitoringEnabled_; }
    QList<qint64> monitorIgnoredPorts() const { return monitorIgnoredPorts_; }
    QStringList monitorIgnoredApps() const { return monitorIgnoredApps_; }
    QList<qint64> conflictIgnoredPorts() const { return conflictIgnoredPorts_; }
    QStringList conflictIgnoredApps() const { return conflictIgnoredApps_; }
    bool hasCompletedOnboarding() const { return hasCompletedOnboarding_; }

    void setShowInMenuBar(bool shown);
    void setShowInDock(bool shown);
    void setLaunchAtLogin(bool launched);
    void setGlobalShortcutEnabled(bool enabled);
    void setPortMonitoringEnabled(bool enabled);
    void setConflictMonitoringEnabled(bool enabled);
    void setMonitorIgnoredPorts(const QList<qint64>& ports);
    void setMonitorIgnoredApps(const QStringList& names);
    void setConflictIgnoredPorts(const QList<qint64>& ports);
    void setConflictIgnoredApps(const QStringList& names);
    void setHasCompletedOnboarding(bool completed);

    enum class Trouble : std::uint8_t {
        none,
        unwritten, // changes could not be kept so far
        damaged,   // the file was, and what could be read of it has been kept
    };
    void setTrouble(Trouble trouble);
    // What is wrong with the file that keeps all this, for the user; empty mostly.
    QString notice() const;
    void dismissNotice() { setTrouble(Trouble::none); }

  Q_SIGNALS:
    void showInMenuBarChanged();
    void showInDockChanged();
    void launchAtLoginChanged();
    void globalShortcutEnabledChanged();
    void portMonitoringEnabledChanged();
    void conflictMonitoringEnabledChanged();
    void monitorIgnoredPortsChanged();
    void monitorIgnoredAppsChanged();
    void conflictIgnoredPortsChanged();
    void conflictIgnoredAppsChanged();
    void hasCompletedOnboardingChanged();
    void noticeChanged();

  private:
    using Changed = void (AppSettings::*)();

    void loadBoolean(const QString& key, void (AppSettings::*assign)(bool));
    void loadPorts(const QString& key, void (AppSettings::*assign)(const QList<qint64>&));
    void loadNames(const QString& key, void (AppSettings::*assign)(const QStringList&));

    template <typename Value>
    void change(Value& member, const Value& value, Changed changed);
    template <typename Value>
    void changeStored(Value& member, const Value& value, const QString& key, Changed changed);

    UserDefaults& defaults_;
    AppService& loginItem_;

    bool showInMenuBar_{true};
    bool showInDock_{false};
    bool launchAtLogin_{false};
    bool globalShortcutEnabled_{false};
    bool portMonitoringEnabled_{false};
    bool conflictMonitoringEnabled_{false};
    QList<qint64> monitorIgnoredPorts_;
    QStringList monitorIgnoredApps_;
    QList<qint64> conflictIgnoredPorts_;
    QStringList conflictIgnoredApps_;
    bool hasCompletedOnboarding_{false};
    Trouble trouble_{Trouble::none};
};

} // namespace zenlot
