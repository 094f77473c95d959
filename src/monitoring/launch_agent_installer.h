// Registers the background monitor as an agent of the user's session, and tells how that stands.
//
// The registration belongs to the desktop, where the user can change it at any time: nothing is
// remembered, every operation asks the service. All of it is synchronous and made from the main
// thread. What install() does goes to the system log, line by line.
//
//     if (const std::optional<InstallError> error = installer.install())
//         show(error->description());
#pragma once

#include "monitoring/install_error.h"
#include "platform/app_service.h"
#include "platform/system_log.h"

#include <QString>

#include <optional>

namespace zenlot {

class LaunchAgentInstaller {
  public:
    // `bundlePath` is where the application is installed; it is named in the log.
    LaunchAgentInstaller(AppService& service, SystemLog& log, QString bundlePath);

    // "notRegistered", "enabled", "requiresApproval", "notFound" or "unknown(7)".
    QString statusText() const;
    bool isEnabled() const;
    // Also when it can't run: anything but not registered. A refresh does not interrupt it: who
    // asks meanwhile would take a pause of ours for a choice of the user's.
    bool isInstalled() const;

    // Why an agent that is registered does not run; none while it may.
    std::optional<InstallError> failure() const;

    // An agent that is registered is registered again.
    [[nodiscard]] std::optional<InstallError> install();
    // A failure is that of the service, unchanged.
    [[nodiscard]] std::optional<AppServiceError> uninstall();

    // What is registered is unregistered, and registered again by the second call, unless
    // somebody unregistered it meanwhile. Failures are told by the status.
    void beginRefresh();
    void finishRefresh();

  private:
    AppService& service_;
    SystemLog& log_;
    QString bundlePath_;
    bool isBeingRefreshed_{false};
};

} // namespace zenlot
