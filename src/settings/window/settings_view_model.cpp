#include "settings/window/settings_view_model.h"

#include <QCoreApplication>
#include <QCoroFuture>
#include <QFile>
#include <QPointer>

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
    if (enabled)
        switchOn();
    else
        switchOff();
}

QCoro::Task<> SettingsViewModel::switchOff() {
    const QPointer<SettingsViewModel> self(this);
    const QFuture<std::optional<AppServiceError>> removal = installer_.uninstall();
    // What could not be unregistered is silent all the same while the setting is off.
    co_await removal;
    if (self)
        settings_.setConflictMonitoringEnabled(false);
}

QCoro::Task<> SettingsViewModel::switchOn() {
    const QPointer<SettingsViewModel> self(this);
    const QFuture<std::optional<InstallError>> installation = installer_.install();
    const std::optional<InstallError> error = co_await installation;
    if (!self)
        co_return;
    if (!error) {
        settings_.setConflictMonitoringEnabled(true);
        co_return;
    }
    const bool needsApproval = error->kind() == InstallError::Case::requiresApproval;
    setProblem(error->description(), needsApproval);
    if (needsApproval)
        openLoginItems();
}

QCoro::Task<> SettingsViewModel::recheckApproval() {
    const QPointer<SettingsViewModel> self(this);
    const QFuture<AgentState> answer = installer_.state();
    const AgentState state = co_await answer;
    if (!self)
        co_return;
    if (!state.isEnabled()) {
        setProblem(QCoreApplication::translate(
                       "InstallError",
                       "Zenlot is still blocked. Toggle \"Allow in the Background\" on for Zenlot "
                       "in System Settings → General → Login Items & Extensions."),
                   needsApproval_);
        co_return;
    }
    // Whoever allows a service here has not started it. Whatever comes of it, it is enabled.
    installer_.install();
    settings_.setConflictMonitoringEnabled(true);
    setProblem(QString(), false);
}

QCoro::Task<> SettingsViewModel::syncWithAgent() {
    const QPointer<SettingsViewModel> self(this);
    const QFuture<AgentState> answer = installer_.state();
    const AgentState state = co_await answer;
    if (!self)
        co_return;
    if (state.failure)
        setProblem(state.failure->description(), false);
    const bool isOn = state.isInstalled() && !state.failure;
    if (!isOn && settings_.conflictMonitoringEnabled())
        settings_.setConflictMonitoringEnabled(false);
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
