#include "settings/window/settings_view_model.h"

#include <QCoreApplication>
#include <QFile>

#include <utility>

namespace zenlot {

SettingsViewModel::SettingsViewModel(AppSettings& settings, LaunchAgentInstaller& installer,
                                     std::function<void()> openLoginItems, QObject* parent,
                                     QString bindwatchSocket)
    : QObject(parent), settings_(settings), installer_(installer),
      openLoginItems_(std::move(openLoginItems)), bindwatchSocket_(std::move(bindwatchSocket)),
      monitorPorts_(settings, &AppSettings::monitorIgnoredPorts,
                    &AppSettings::setMonitorIgnoredPorts, &AppSettings::monitorIgnoredPortsChanged),
      monitorApps_(settings, &AppSettings::monitorIgnoredApps, &AppSettings::setMonitorIgnoredApps,
                   &AppSettings::monitorIgnoredAppsChanged),
      conflictPorts_(settings, &AppSettings::conflictIgnoredPorts,
                     &AppSettings::setConflictIgnoredPorts,
                     &AppSettings::conflictIgnoredPortsChanged),
      conflictApps_(settings, &AppSettings::conflictIgnoredApps,
                    &AppSettings::setConflictIgnoredApps,
                    &AppSettings::conflictIgnoredAppsChanged) {
    connect(&settings_, &AppSettings::noticeChanged, this, &SettingsViewModel::noticeChanged);
    connect(&look_, &QFutureWatcherBase::finished, this, [this] { noteBindwatch(look_.result()); });
}

void SettingsViewModel::lookForBindwatch() {
    look_.setFuture(worker_.run([socket = bindwatchSocket_] { return QFile::exists(socket); }));
}

void SettingsViewModel::noteBindwatch(bool isThere) {
    if (isThere == hasBindwatch_)
        return;
    hasBindwatch_ = isThere;
    Q_EMIT hasBindwatchChanged();
}

void SettingsViewModel::setConflictMonitoring(bool enabled) {
    setProblem(QString(), false);
    if (!enabled) {
        // What could not be unregistered is silent all the same while the setting is off.
        [[maybe_unused]] const auto ignored = installer_.uninstall();
        settings_.setConflictMonitoringEnabled(false);
        return;
    }
    const std::optional<InstallError> error = installer_.install();
    if (!error) {
        settings_.setConflictMonitoringEnabled(true);
        return;
    }
    const bool needsApproval = error->kind() == InstallError::Case::requiresApproval;
    setProblem(error->description(), needsApproval);
    if (needsApproval)
        openLoginItems();
}

void SettingsViewModel::recheckBackgroundApproval() {
    if (installer_.isEnabled()) {
        // Whoever allows a service here has not started it. Whatever comes of it, it is enabled.
        [[maybe_unused]] const auto ignored = installer_.install();
        settings_.setConflictMonitoringEnabled(true);
        setProblem(QString(), false);
    } else {
        setProblem(QCoreApplication::translate(
                       "InstallError",
                       "Zenlot is still blocked. Toggle \"Allow in the Background\" on for Zenlot "
                       "in System Settings → General → Login Items & Extensions."),
                   needsApproval_);
    }
}

void SettingsViewModel::syncConflictMonitoringWithAgent() {
    const bool isInstalled = installer_.isInstalled();
    const std::optional<InstallError> failure =
        isInstalled ? installer_.failure() : std::optional<InstallError>();
    if (failure)
        setProblem(failure->description(), false);
    const bool isOn = isInstalled && !failure;
    if (isOn != settings_.conflictMonitoringEnabled())
        settings_.setConflictMonitoringEnabled(isOn);
}

void SettingsViewModel::setProblem(const QString& installError, bool needsApproval) {
    if (installError_ != installError) {
        installError_ = installError;
        Q_EMIT installErrorChanged();
    }
    if (needsApproval_ != needsApproval) {
        needsApproval_ = needsApproval;
        Q_EMIT needsApprovalChanged();
    }
}

} // namespace zenlot
