// Turns events on ports into alerts, and carries out what the user answers: ends the process, or
// ignores its port or its name from now on, and tells the rest of the program by kConflictHandled.
//
// Belongs to the main thread. Nothing filters here; whoever calls decides whether to alert. Until
// configure() there are no settings: alerts are posted, and of the answers only the kill works.
// Refused alerts and permissions leave a line in the log, nothing else. Of a name longer than any
// program's, only the beginning is used.
//
//     manager.configure(settings);
//     manager.notifyConflict(3000, u"node"_s, 4242);
#pragma once

#include "monitoring/notification_center.h"
#include "monitoring/port_inventory.h"
#include "platform/user_notification_center.h"
#include "settings/app_log.h"
#include "settings/app_settings.h"

#ifndef Q_MOC_RUN // which can't read the coroutine headers
#include <QCoroTask>
#endif
#include <QObject>
#include <QPointer>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

namespace zenlot {

class PortNotificationManager final : public QObject, public UserNotificationCenterDelegate {
    Q_OBJECT

  public:
    static constexpr QLatin1StringView killActionID{"KILL_PROCESS"};
    static constexpr QLatin1StringView ignorePortActionID{"IGNORE_PORT"};
    static constexpr QLatin1StringView ignoreProcessActionID{"IGNORE_PROCESS"};
    static constexpr QLatin1StringView categoryID{"PORT_OCCUPIED"};

    // The references must outlive the object.
    PortNotificationManager(UserNotificationCenter& alerts, PortInventory& inventory,
                            NotificationCenter& notifications, AppLog& log,
                            QObject* parent = nullptr);
    ~PortNotificationManager() override;

    // Finished when the desktop has said whether alerts are allowed. May be called again.
    QCoro::Task<> configure(AppSettings& settings);

    // An alert that a port which somebody wanted is held by this process.
    void notifyConflict(std::int64_t port, const QString& name, std::int64_t pid);

    // An alert that this process has begun to listen on the port.
    void notifyPortActivity(std::int64_t port, const QString& name, std::int64_t pid);

    void handleResponse(const UserNotificationResponse& response,
                        const std::function<void()>& completionHandler);

    void postConflictHandled(std::optional<std::int64_t> port, std::optional<std::int64_t> pid,
                             const QString& name);

    PresentationOptions willPresentNotification(const UserNotificationRequest& request) override;
    void didReceiveNotificationResponse(const UserNotificationResponse& response,
                                        const std::function<void()>& completionHandler) override;

  private:
    // What differs between the two kinds of alerts.
    struct Kind {
        QString idPrefix;
        QString title; // %1: port
        QString body;  // %1: name, %2: pid, %3: port
    };

    QCoro::Task<> post(Kind kind, std::int64_t port, QString name, std::int64_t pid);

    UserNotificationCenter& alerts_;
    PortInventory& inventory_;
    NotificationCenter& notifications_;
    AppLog& log_;
    QPointer<AppSettings> settings_;
    bool isDelegate_{false};
};

} // namespace zenlot
