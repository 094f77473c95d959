// The desktop's alerts: messages with buttons that the user sees outside of our windows.
//
// Everything here belongs to the main thread, and nothing waits for the service that shows the
// alerts: answers come as futures, always, also when there is no such service. A future that is
// thrown away loses nothing but the answer.
//
//     alerts.setResponder([](const QString& alert, const QString& action) { ... });
//     const auto error = co_await alerts.add({identifier, content});
//
// The numbers of the enumerations stand in log lines.
#pragma once

#include <QFuture>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace zenlot {

struct UserNotificationAction {
    QString identifier;
    QString title;

    friend bool operator==(const UserNotificationAction&, const UserNotificationAction&) = default;
};

// Title and body are plain text; they may hold what other processes chose to call themselves.
struct UserNotificationContent {
    QString title;
    QString body;
    QList<UserNotificationAction> actions{}; // as buttons, in this order

    friend bool operator==(const UserNotificationContent&,
                           const UserNotificationContent&) = default;
};

struct UserNotificationRequest {
    QString identifier; // an alert replaces an earlier one of the same identifier
    UserNotificationContent content;

    friend bool operator==(const UserNotificationRequest&,
                           const UserNotificationRequest&) = default;
};

struct UserNotificationError {
    QString message; // for the user

    friend bool operator==(const UserNotificationError&, const UserNotificationError&) = default;
};

// Whether alerts may be shown; none of it when asking failed.
struct AuthorizationAnswer {
    bool isGranted{false};
    std::optional<UserNotificationError> error;
};

enum class AuthorizationStatus : int { notDetermined = 0, denied = 1, authorized = 2 };
enum class UserNotificationSetting : int { notSupported = 0, disabled = 1, enabled = 2 };

struct UserNotificationSettings {
    AuthorizationStatus authorizationStatus{AuthorizationStatus::notDetermined};
    UserNotificationSetting alertSetting{UserNotificationSetting::notSupported};
    UserNotificationSetting soundSetting{UserNotificationSetting::notSupported};
};

class UserNotificationCenter {
  public:
    UserNotificationCenter() = default;
    UserNotificationCenter(const UserNotificationCenter&) = delete;
    UserNotificationCenter& operator=(const UserNotificationCenter&) = delete;
    virtual ~UserNotificationCenter() = default;

    // Called when the user chooses an action of an alert that is still open. None takes it back.
    using Responder =
        std::function<void(const QString& alertIdentifier, const QString& actionIdentifier)>;
    virtual void setResponder(Responder responder) = 0;

    // Called when a service that shows alerts has come, which may find alerts that an earlier one
    // refused still true. None takes it back.
    using ArrivalHandler = std::function<void()>;
    virtual void setArrivalHandler(ArrivalHandler handler) = 0;

    virtual QFuture<AuthorizationAnswer> requestAuthorization() = 0;
    virtual QFuture<UserNotificationSettings> notificationSettings() = 0;

    // Shows the alert at once. The answer is none when the desktop has taken it.
    virtual QFuture<std::optional<UserNotificationError>>
    add(const UserNotificationRequest& request) = 0;

    // Takes the alert back, if it is shown or about to be. That is no response.
    virtual void remove(const QString& identifier) = 0;
};

} // namespace zenlot
