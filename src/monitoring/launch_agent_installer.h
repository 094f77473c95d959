// Registers the background monitor as an agent of the user's session, and tells how that stands.
//
// The registration belongs to the desktop, where the user can change it at any time: nothing is
// remembered, every operation asks the service. That may take seconds, so a worker thread does it,
// one operation after the other in the order in which they were asked for. What install() does goes
// to the system log, line by line. Main thread only.
//
//     const QFuture<std::optional<InstallError>> installation = installer.install();
//     if (const std::optional<InstallError> error = co_await installation)
//         show(error->description());
#pragma once

#include "monitoring/install_error.h"
#include "platform/app_service.h"
#include "platform/system_log.h"
#include "workers/worker_threads.h"

#include <QFuture>
#include <QString>

#include <optional>

namespace zenlot {

struct AgentState {
    AppServiceStatus status{AppServiceStatus::notRegistered};
    // Why an agent that is registered does not run; none while it may.
    std::optional<InstallError> failure{};
    // A refresh is under way: who asks meanwhile must not take our pause for a choice of the
    // user's.
    bool isBeingRefreshed{false};

    bool isEnabled() const { return status == AppServiceStatus::enabled; }
    // Also when it can't run: anything but not registered.
    bool isInstalled() const {
        return isBeingRefreshed || status != AppServiceStatus::notRegistered;
    }
    // "notRegistered", "enabled", "requiresApproval", "notFound" or "unknown(7)".
    QString statusText() const;
};

class LaunchAgentInstaller {
  public:
    // `bundlePath` is where the application is installed; it is named in the log. The end of this
    // object waits for what was begun; the references must outlive it.
    LaunchAgentInstaller(AppService& service, SystemLog& log, QString bundlePath);

    QFuture<AgentState> state();

    // An agent that is registered is registered again.
    QFuture<std::optional<InstallError>> install();
    // A failure is that of the service, unchanged.
    QFuture<std::optional<AppServiceError>> uninstall();

    // What is registered is unregistered, and registered again by the second call, unless
    // somebody unregistered it meanwhile. Failures are told by the state.
    void beginRefresh();
    void finishRefresh();

    // Until everything that was asked for is done.
    void wait() { worker_.wait(); }

  private:
    AgentState readState() const;
    std::optional<InstallError> registerAgent();

    AppService& service_;
    SystemLog& log_;
    QString bundlePath_;
    bool isBeingRefreshed_{false};
    WorkerThreads worker_{1}; // the last member
};

} // namespace zenlot
