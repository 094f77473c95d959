#include "settings/app_settings.h"

#include <optional>

namespace zenlot {

using namespace Qt::StringLiterals;

AppSettings::AppSettings(UserDefaults& defaults, AppService& loginItem, QObject* parent)
    : QObject(parent), defaults_(defaults), loginItem_(loginItem) {}

void AppSettings::load() {
    loadBoolean(u"showInMenuBar"_s, &AppSettings::setShowInMenuBar);
    loadBoolean(u"showInDock"_s, &AppSettings::setShowInDock);
    setLaunchAtLogin(loginItem_.status() == AppServiceStatus::enabled);
    loadBoolean(u"globalShortcutEnabled"_s, &AppSettings::setGlobalShortcutEnabled);
    loadBoolean(u"portMonitoringEnabled"_s, &AppSettings::setPortMonitoringEnabled);
    loadBoolean(u"conflictMonitoringEnabled"_s, &AppSettings::setConflictMonitoringEnabled);
    loadPorts(u"monitorIgnoredPorts"_s, &AppSettings::setMonitorIgnoredPorts);
    loadNames(u"monitorIgnoredApps"_s, &AppSettings::setMonitorIgnoredApps);
    loadPorts(u"conflictIgnoredPorts"_s, &AppSettings::setConflictIgnoredPorts);
    loadNames(u"conflictIgnoredApps"_s, &AppSettings::setConflictIgnoredApps);
    loadBoolean(u"hasCompletedOnboarding"_s, &AppSettings::setHasCompletedOnboarding);
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

void AppSettings::setTrouble(Trouble trouble) {
    change(trouble_, trouble, &AppSettings::noticeChanged);
}

QString AppSettings::notice() const {
    switch (trouble_) {
    case Trouble::none:
        break;
    case Trouble::unwritten:
        return tr("Your settings can't be saved at the moment. Zenlot keeps trying.");
    case Trouble::damaged:
        return tr(
            "The file with your settings was damaged. What could be read was kept; the old file "
            "has “.damaged” in its name.");
    }
    return {};
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
    changeStored(showInMenuBar_, shown, u"showInMenuBar"_s, &AppSettings::showInMenuBarChanged);
}

void AppSettings::setShowInDock(bool shown) {
    changeStored(showInDock_, shown, u"showInDock"_s, &AppSettings::showInDockChanged);
}

void AppSettings::setGlobalShortcutEnabled(bool enabled) {
    changeStored(globalShortcutEnabled_, enabled, u"globalShortcutEnabled"_s,
                 &AppSettings::globalShortcutEnabledChanged);
}

void AppSettings::setPortMonitoringEnabled(bool enabled) {
    changeStored(portMonitoringEnabled_, enabled, u"portMonitoringEnabled"_s,
                 &AppSettings::portMonitoringEnabledChanged);
}

void AppSettings::setConflictMonitoringEnabled(bool enabled) {
    changeStored(conflictMonitoringEnabled_, enabled, u"conflictMonitoringEnabled"_s,
                 &AppSettings::conflictMonitoringEnabledChanged);
}

void AppSettings::setMonitorIgnoredPorts(const QList<qint64>& ports) {
    changeStored(monitorIgnoredPorts_, ports, u"monitorIgnoredPorts"_s,
                 &AppSettings::monitorIgnoredPortsChanged);
}

void AppSettings::setMonitorIgnoredApps(const QStringList& names) {
    changeStored(monitorIgnoredApps_, names, u"monitorIgnoredApps"_s,
                 &AppSettings::monitorIgnoredAppsChanged);
}

void AppSettings::setConflictIgnoredPorts(const QList<qint64>& ports) {
    changeStored(conflictIgnoredPorts_, ports, u"conflictIgnoredPorts"_s,
                 &AppSettings::conflictIgnoredPortsChanged);
}

void AppSettings::setConflictIgnoredApps(const QStringList& names) {
    changeStored(conflictIgnoredApps_, names, u"conflictIgnoredApps"_s,
                 &AppSettings::conflictIgnoredAppsChanged);
}

void AppSettings::setHasCompletedOnboarding(bool completed) {
    changeStored(hasCompletedOnboarding_, completed, u"hasCompletedOnboarding"_s,
                 &AppSettings::hasCompletedOnboardingChanged);
}

} // namespace zenlot
