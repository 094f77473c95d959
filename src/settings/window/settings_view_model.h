// The state of the settings window beyond the settings themselves: the registration of the
// background monitor, and the lists of exceptions.
//
// The switch for conflicts never says more than is true: it is on only once the monitor could be
// registered, and off when the desktop has given up on it or does not have it any more. Nothing but
// the user switches it on. Problems stay visible until the next attempt, and are forgotten with the
// object. Whether the helper of the system is there is looked up when it is asked for, on a worker
// thread, and so is the registration. Main thread only.
#pragma once

#include "bindwatch/bindwatch_service.h"
#include "monitoring/launch_agent_installer.h"
#include "settings/app_settings.h"
#include "settings/window/exception_list_model.h"
#include "workers/worker_threads.h"

#ifndef Q_MOC_RUN // which can't read the coroutine headers
#include <QCoroTask>
#endif
#include <QFutureWatcher>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace zenlot {

class SettingsViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns it")

    Q_PROPERTY(zenlot::AppSettings* settings READ settings CONSTANT)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(QString installError READ installError NOTIFY installErrorChanged)
    Q_PROPERTY(bool needsApproval READ needsApproval NOTIFY needsApprovalChanged)
    Q_PROPERTY(bool hasBindwatch READ hasBindwatch NOTIFY hasBindwatchChanged)
    Q_PROPERTY(QString bindwatchCommand READ bindwatchCommand CONSTANT)
    Q_PROPERTY(zenlot::ExceptionListModel* monitorPorts READ monitorPorts CONSTANT)
    Q_PROPERTY(zenlot::ExceptionListModel* monitorApps READ monitorApps CONSTANT)
    Q_PROPERTY(zenlot::ExceptionListModel* conflictPorts READ conflictPorts CONSTANT)
    Q_PROPERTY(zenlot::ExceptionListModel* conflictApps READ conflictApps CONSTANT)

  public:
    // The references must outlive the object. Login items are where the user may allow the monitor.
    SettingsViewModel(AppSettings& settings, LaunchAgentInstaller& installer,
                      std::function<void()> openLoginItems, QObject* parent = nullptr,
                      QString bindwatchSocket = QLatin1String(kBindwatchSocket));

    AppSettings* settings() const { return &settings_; }
    // What is wrong with the file of the settings; empty mostly.
    QString notice() const { return settings_.notice(); }
    Q_INVOKABLE void dismissNotice() { settings_.dismissNotice(); }
    // Empty while there is nothing to report.
    QString installError() const { return installError_; }
    bool needsApproval() const { return needsApproval_; }
    // Whether the kernel tells of refused ports, through the helper of the system.
    bool hasBindwatch() const { return hasBindwatch_; }
    QString bindwatchCommand() const { return QLatin1String(kBindwatchCommand); }
    ExceptionListModel* monitorPorts() { return &monitorPorts_; }
    ExceptionListModel* monitorApps() { return &monitorApps_; }
    ExceptionListModel* conflictPorts() { return &conflictPorts_; }
    ExceptionListModel* conflictApps() { return &conflictApps_; }

    Q_INVOKABLE void setConflictMonitoring(bool enabled);
    Q_INVOKABLE void recheckBackgroundApproval() { recheckApproval(); }
    Q_INVOKABLE void syncConflictMonitoringWithAgent() { syncWithAgent(); }
    Q_INVOKABLE void lookForBindwatch();
    Q_INVOKABLE void openLoginItems() const { openLoginItems_(); }

  Q_SIGNALS:
    void noticeChanged();
    void installErrorChanged();
    void needsApprovalChanged();
    void hasBindwatchChanged();

  private:
    QCoro::Task<> switchOn();
    QCoro::Task<> switchOff();
    QCoro::Task<> recheckApproval();
    QCoro::Task<> syncWithAgent();
    void noteBindwatch(bool isThere);
    void setProblem(const QString& installError, bool needsApproval);

    AppSettings& settings_;
    LaunchAgentInstaller& installer_;
    std::function<void()> openLoginItems_;
    QString installError_;
    bool needsApproval_{false};
    QString bindwatchSocket_;
    bool hasBindwatch_{false};
    QFutureWatcher<bool> look_;
    ExceptionListModel monitorPorts_;
    ExceptionListModel monitorApps_;
    ExceptionListModel conflictPorts_;
    ExceptionListModel conflictApps_;
    WorkerThreads worker_{1}; // the last member
};

} // namespace zenlot
