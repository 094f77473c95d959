// The desktop's alerts: messages with buttons that the user sees outside of our windows.
//
// Everything here belongs to the main thread, and nothing waits for the service that shows the
// alerts: answers come as futures, always, also when there is no such service. A future that is
// thrown away loses nothing but the answer.
//
//     alerts.setDelegate(&manager);
//     alerts.setNotificationCategories({category});
//     const auto error = co_await alerts.add({identifier, content});
//
// The numbers of the enumerations stand in log lines.
#pragma once

#include "platform/user_info.h"

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
    bool isDestructive{false};

    friend bool operator==(const UserNotificationAction&, const UserNotificationAction&) = default;
};

// Alerts that name a category carry its actions as buttons, in this order.
struct UserNotificationCategory {
    QString identifier;
    QList<UserNotificationAction> actions;

    friend bool operator==(const UserNotificationCategory&,
                           const UserNotificationCategory&) = default;
};

enum class InterruptionLevel : int { passive = 0, active = 1, timeSensitive = 2, critical = 3 };

// Title and body are plain text; they may hold what other processes chose to call themselves.
struct UserNotificationContent {
    QString title;
    QString body;
    QString categoryIdentifier;
    QString threadIdentifier; // alerts of one thread belong together
    QString summaryArgument;
    UserInfo userInfo; // comes back with the response
    bool hasSound{false};
    InterruptionLevel interruptionLevel{InterruptionLevel::active};
    QStringList withheldActions{}; // those of the category that this alert goes without

    friend bool operator==(const UserNotificationContent&,
                           const UserNotificationContent&) = default;
};

struct UserNotificationRequest {
    QString identifier; // an alert replaces an earlier one of the same identifier
    UserNotificationContent content;

    friend bool operator==(const UserNotificationRequest&,
                           const UserNotificationRequest&) = default;
};

struct UserNotificationResponse {
    QString actionIdentifier;
    UserNotificationRequest request;
};

// How an alert is presented.
struct PresentationOptions {
    bool banner{false};
    bool list{false};
    bool sound{false};
    bool badge{false};

    friend bool operator==(const PresentationOptions&, const PresentationOptions&) = default;
};

struct AuthorizationOptions {
    bool alert{false};
    bool sound{false};
    bool badge{false};

    friend bool operator==(const AuthorizationOptions&, const AuthorizationOptions&) = default;
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

class UserNotificationCenterDelegate {
  public:
    UserNotificationCenterDelegate() = default;
    UserNotificationCenterDelegate(const UserNotificationCenterDelegate&) = delete;
    UserNotificationCenterDelegate& operator=(const UserNotificationCenterDelegate&) = delete;
    virtual ~UserNotificationCenterDelegate() = default;

    // How to present an alert while the application is in front.
    virtual PresentationOptions willPresentNotification(const UserNotificationRequest& request) = 0;

    // The user chose an action. The handler is called once, when the response has been dealt with.
    virtual void didReceiveNotificationResponse(const UserNotificationResponse& response,
                                                const std::function<void()>& completionHandler) = 0;
};

class UserNotificationCenter {
  public:
    UserNotificationCenter() = default;
    UserNotificationCenter(const UserNotificationCenter&) = delete;
    UserNotificationCenter& operator=(const UserNotificationCenter&) = delete;
    virtual ~UserNotificationCenter() = default;

    // The delegate must outlive the center or be taken back with nullptr.
    virtual void setDelegate(UserNotificationCenterDelegate* delegate) = 0;

    // Replaces the categories of before. They count for requests that are added later.
    virtual void setNotificationCategories(const QList<UserNotificationCategory>& categories) = 0;

    virtual QFuture<AuthorizationAnswer> requestAuthorization(AuthorizationOptions options) = 0;
    virtual QFuture<UserNotificationSettings> notificationSettings() = 0;

    // Shows the alert at once. The answer is none when the desktop has taken it.
    virtual QFuture<std::optional<UserNotificationError>>
    add(const UserNotificationRequest& request) = 0;

    // Takes the alert back, if it is shown or about to be. That is no response.
    virtual void remove(const QString& identifier) = 0;
};

} // namespace zenlot
