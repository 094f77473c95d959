// Alerts through the notification service of the session, org.freedesktop.Notifications.
//
// Alerts are allowed when the service runs or can be started. It may come late, go, or be replaced
// at any time: each run of it is asked anew what it can do, and alerts of an earlier run are
// forgotten, with their buttons. Questions that it doesn't answer in time are answered for it; more
// alerts than NotificationServer::kMost at once are refused.
//
// A click on the alert itself, and closing it, are no responses.
//
//     FreedesktopUserNotificationCenter alerts(sessionBus);
#pragma once

#include "platform/linux/bus_name_owner.h"
#include "platform/linux/notification_server.h"
#include "platform/user_notification_center.h"

#include <QDBusConnection>
#include <QObject>

#include <chrono>
#include <memory>

namespace zenlot {

class SessionBus;

class FreedesktopUserNotificationCenter final : public QObject, public UserNotificationCenter {
    Q_OBJECT

  public:
    // Long enough for a service that the bus has to start while everybody logs in.
    static constexpr std::chrono::milliseconds kAnswerTimeout{10'000};

    // With a connection to no bus every answer is an error. A bus that comes back is a new run of
    // the service.
    explicit FreedesktopUserNotificationCenter(
        const SessionBus& bus, std::chrono::milliseconds answerTimeout = kAnswerTimeout);
    explicit FreedesktopUserNotificationCenter(
        QDBusConnection bus, std::chrono::milliseconds answerTimeout = kAnswerTimeout);

    void setResponder(Responder responder) override;
    void setArrivalHandler(ArrivalHandler handler) override;
    QFuture<AuthorizationAnswer> requestAuthorization() override;
    QFuture<UserNotificationSettings> notificationSettings() override;
    QFuture<std::optional<UserNotificationError>>
    add(const UserNotificationRequest& request) override;
    void remove(const QString& identifier) override;

  private:
    void replaceServer(const QString& newOwner);
    std::unique_ptr<NotificationServer> makeServer();
    void respond(const QString& alertIdentifier, const QString& actionIdentifier);

    template <class Answer, class Convert>
    QFuture<Answer> askServer(const Answer& fallback, Convert convert);

    QDBusConnection bus_;
    std::chrono::milliseconds answerTimeout_;
    Responder responder_;
    ArrivalHandler arrivalHandler_;
    std::unique_ptr<NotificationServer> server_;
    BusNameOwner owner_{QStringLiteral("org.freedesktop.Notifications")};
};

} // namespace zenlot
