#include "settings/app_settings.h"

#include <optional>

namespace zenlot {

AppSettings::AppSettings(UserDefaults& defaults, AppService& loginItem, QObject* parent)
    : QObject(parent), defaults_(defaults), loginItem_(loginItem) {
    load();
}

void AppSettings::load() {
    loadBoolean(QStringLiteral("showInMenuBar"), &AppSettings::setShowInMenuBar);
    loadBoolean(QStringLiteral("showInDock"), &AppSettings::setShowInDock);
    setLaunchAtLogin(loginItem_.status() == AppServiceStatus::enabled);
    loadBoolean(QStringLiteral("globalShortcutEnabled"), &AppSettings::setGlobalShortcutEnabled);
    loadBoolean(QStringLiteral("portMonitoringEnabled"), &AppSettings::setPortMonitoringEnabled);
    loadBoolean(QStringLiteral("conflictMonitoringEnabled"),
                &AppSettings::setConflictMonitoringEnabled);
    loadPorts(QStringLiteral("monitorIgnoredPorts"), &AppSettings::setMonitorIgnoredPorts);
    loadNames(QStringLiteral("monitorIgnoredApps"), &AppSettings::setMonitorIgnoredApps);
    loadPorts(QStringLiteral("conflictIgnoredPorts"), &AppSettings::setConflictIgnoredPorts);
    loadNames(QStringLiteral("conflictIgnoredApps"), &AppSettings::setConflictIgnoredApps);
    loadBoolean(QStringLiteral("hasCompletedOnboarding"), &AppSettings::setHasCompletedOnboarding);
}

void AppSettings::loadBoolean(const QString& key, void (AppSettings::*assign)(bool)) {
    if (defaults_.object(key))
        (this->*assign)(defaults_.boolean(key));
}

void AppSettings::loadPorts(const QString& key, void (AppSettings::*assign)(const QList<qint64>&)) {
    if (const std::optional<QList<qint64>> ports = defaults_.integers(key))
        (this->*assign)(*ports);
}

void AppSettings::loadNames(const QString& key, void (AppSettings::*assign)(const QStringList&)) {
    if (const std::optional<QStringList> names = defaults_.strings(key))
        (this->*assign)(*names);
}

template <typename Value>
void AppSettings::change(Value& member, const Value& value, Changed changed) {
    if (member == value)
        return;
    member = value;
    Q_EMIT(this->*changed)();
}

// Writes what the property holds after its observers were told, since one of them may have
// assigned it anew.
template <typename Value>
void AppSettings::changeStored(Value& member, const Value& value, const QString& key,
                               Changed changed) {
    change(member, value, changed);
    defaults_.set(key, member);
}

void AppSettings::setLaunchAtLogin(bool launched) {
    change(launchAtLogin_, launched, &AppSettings::launchAtLoginChanged);
    // The property keeps the assigned value when the desktop refuses.
    if (launchAtLogin_)
        static_cast<void>(loginItem_.registerService());
    else
        static_cast<void>(loginItem_.unregisterService());
}

void AppSettings::setShowInMenuBar(bool shown) {
    changeStored(showInMenuBar_, shown, QStringLiteral("showInMenuBar"),
                 &AppSettings::showInMenuBarChanged);
}

void AppSettings::setShowInDock(bool shown) {
    changeStored(showInDock_, shown, QStringLiteral("showInDock"), &AppSettings::showInDockChanged);
}

void AppSettings::setGlobalShortcutEnabled(bool enabled) {
    changeStored(globalShortcutEnabled_, enabled, QStringLiteral("globalShortcutEnabled"),
                 &AppSettings::globalShortcutEnabledChanged);
}

void AppSettings::setPortMonitoringEnabled(bool enabled) {
    changeStored(portMonitoringEnabled_, enabled, QStringLiteral("portMonitoringEnabled"),
                 &AppSettings::portMonitoringEnabledChanged);
}

void AppSettings::setConflictMonitoringEnabled(bool enabled) {
    changeStored(conflictMonitoringEnabled_, enabled, QStringLiteral("conflictMonitoringEnabled"),
                 &AppSettings::conflictMonitoringEnabledChanged);
}

void AppSettings::setMonitorIgnoredPorts(const QList<qint64>& ports) {
    changeStored(monitorIgnoredPorts_, ports, QStringLiteral("monitorIgnoredPorts"),
                 &AppSettings::monitorIgnoredPortsChanged);
}

void AppSettings::setMonitorIgnoredApps(const QStringList& names) {
    changeStored(monitorIgnoredApps_, names, QStringLiteral("monitorIgnoredApps"),
                 &AppSettings::monitorIgnoredAppsChanged);
}

void AppSettings::setConflictIgnoredPorts(const QList<qint64>& ports) {
    changeStored(conflictIgnoredPorts_, ports, QStringLiteral("conflictIgnoredPorts"),
                 &AppSettings::conflictIgnoredPortsChanged);
}

void AppSettings::setConflictIgnoredApps(const QStringList& names) {
    changeStored(conflictIgnoredApps_, names, QStringLiteral("conflictIgnoredApps"),
                 &AppSettings::conflictIgnoredAppsChanged);
}

void AppSettings::setHasCompletedOnboarding(bool completed) {
    changeStored(hasCompletedOnboarding_, completed, QStringLiteral("hasCompletedOnboarding"),
                 &AppSettings::hasCompletedOnboardingChanged);
}

} // namespace zenlot
