// A unit of the user's systemd as a background agent.
//
//     SystemdAppService monitor(sessionBus, unit);
//
// Statuses, from what systemd calls the state of the unit's file:
//
//     enabled             enabled, enabled-runtime (until the end of the session)
//     requires approval   masked, masked-runtime: it can't be started, by whatever
//     not registered      disabled, indirect, linked and linked-runtime, alias; also static,
//                         generated and transient, which nobody can enable; no such unit, no
//                         user manager, or one that does not answer
//     not found           any other state (bad, or one of a later systemd)
//
// A unit that systemd finds nowhere is linked from where the program knows its file, and the link
// goes when the unit is unregistered.
//
// Registering enables and starts the unit, and waits for its start as long as it may. (Of a unit of
// the type simple systemd does not say whether its program can be run; the others fail honestly.) A
// registration that fails leaves a unit that was not enabled as it was. Unregistering stops and
// disables it; a unit that is masked, or enabled for all users, is stopped and the rest is refused.
// A unit file that has changed on disk is read anew.
//
// Each call is over within the patience for it, however little the bus or systemd answers. A change
// that was given up may still come about.
//
// Errors of the bus have the name of the error as domain, the code 0, since they have no number,
// and the text of the error. A unit that is masked is refused with the domain
// "SMAppServiceErrorDomain" and the code 1. The rest has the domain "dev.quorvane.zenlot.systemd"
// and a SystemdError as code.
#pragma once

#include "platform/app_service.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDeadlineTimer>
#include <QVariantList>

#include <chrono>
#include <functional>

namespace zenlot {

class SessionBus;

enum class SystemdError : int {
    didNotStart = 1,
    cannotBeEnabled = 2, // the unit has no [Install] section
    stillEnabled = 3,    // for all users, which a user cannot change
    hasFailed = 4,       // as often as its unit allows
};

struct SystemdPatience {
    std::chrono::milliseconds forStatus{1000};
    std::chrono::milliseconds forChange{3000};
};

class SystemdAppService final : public AppService {
    Q_DECLARE_TR_FUNCTIONS(zenlot::SystemdAppService)

  public:
    // Each call goes over the connection of the moment. The file, if there is one, has a full path.
    SystemdAppService(const SessionBus& bus, QString unit, QString unitFile = {},
                      SystemdPatience patience = {});
    SystemdAppService(const QDBusConnection& sessionBus, QString unit, QString unitFile = {},
                      SystemdPatience patience = {});

    // Whether a user manager runs.
    bool hasManager() const;

    AppServiceStatus status() const override;
    std::optional<AppServiceError> registerService() override;
    std::optional<AppServiceError> unregisterService() override;
    std::optional<AppServiceError> failure() const override;

    // The command with which the user, or the administrator, unmasks the unit where it is masked.
    QString unmaskCommand() const;

  private:
    QDBusMessage call(const QString& path, const QString& interface, const QString& method,
                      const QVariantList& arguments, QDeadlineTimer deadline) const;
    QDBusMessage callManager(const QString& method, const QVariantList& arguments,
                             QDeadlineTimer deadline) const;
    QString unitProperty(const QString& unitPath, const QString& interface, const QString& name,
                         QDeadlineTimer deadline) const;
    AppServiceStatus status(QDeadlineTimer deadline) const;
    std::optional<AppServiceError> start(QDeadlineTimer deadline) const;
    std::optional<AppServiceError> withdraw(QDeadlineTimer deadline) const;

    std::function<QDBusConnection()> bus_;
    QString unit_;
    QString unitFile_;
    SystemdPatience patience_;
};

} // namespace zenlot
