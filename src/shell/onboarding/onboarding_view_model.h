// The state of the first run: a welcome, and then the offer to enable the background monitor.
//
// Whoever reaches an end (finishes, skips, or has the monitor enabled) has completed the first run:
// that is stored, and the window is to close. Closing the window by other means stores nothing, so
// the first run is offered again.
//
// Whoever enables the monitor here wants to be told of conflicts: the alerts are switched on with
// it.
//
// Main thread only; the registration is done elsewhere, and the window lives meanwhile.
//
//     OnboardingViewModel model({settings, installer, systemLog}, {.openLoginItems = ...});
#pragma once

#include "monitoring/launch_agent_installer.h"
#include "platform/system_log.h"
#include "settings/app_settings.h"

#ifndef Q_MOC_RUN // which can't read the coroutine headers
#include <QCoroTask>
#endif
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace zenlot {

class OnboardingViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns it")

    Q_PROPERTY(int page READ page NOTIFY pageChanged) // 0: the welcome, 1: the monitor
    Q_PROPERTY(bool daemonInstalled READ daemonInstalled NOTIFY daemonInstalledChanged)
    Q_PROPERTY(bool daemonInstalling READ daemonInstalling NOTIFY daemonInstallingChanged)
    Q_PROPERTY(QString installError READ installError NOTIFY installErrorChanged)
    Q_PROPERTY(bool needsApproval READ needsApproval NOTIFY needsApprovalChanged)

  public:
    // All must outlive the object.
    struct Collaborators {
        AppSettings& settings;
        LaunchAgentInstaller& installer;
        SystemLog& systemLog;
    };
    struct Actions {
        std::function<void()> openLoginItems; // where the user may allow the monitor
    };

    OnboardingViewModel(const Collaborators& with, Actions actions, QObject* parent = nullptr);

    int page() const { return page_; }
    bool daemonInstalled() const { return daemonInstalled_; }
    bool daemonInstalling() const { return daemonInstalling_; }
    // Empty while there is nothing to report.
    QString installError() const { return installError_; }
    bool needsApproval() const { return needsApproval_; }

    // The window appeared.
    Q_INVOKABLE void appear() { lookAtAgent(); }
    Q_INVOKABLE void advance();
    Q_INVOKABLE void finish();
    Q_INVOKABLE void enableBackgroundMonitor();
    Q_INVOKABLE void recheckApproval() { lookAgain(); }
    Q_INVOKABLE void openLoginItems() const;

  Q_SIGNALS:
    void finished();
    void pageChanged();
    void daemonInstalledChanged();
    void daemonInstallingChanged();
    void installErrorChanged();
    void needsApprovalChanged();

  private:
    using Changed = void (OnboardingViewModel::*)();

    template <typename Value>
    void change(Value& member, const Value& value, Changed changed);
    QCoro::Task<> lookAtAgent();
    QCoro::Task<> lookAgain();
    QCoro::Task<> install();

    Collaborators with_;
    Actions actions_;
    int page_{0};
    bool daemonInstalled_{false};
    bool daemonInstalling_{false};
    QString installError_;
    bool needsApproval_{false};
};

} // namespace zenlot
