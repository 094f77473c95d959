#include "monitoring/port_notification_manager.h"

#include "inventory/uuid.h"
#include "monitoring/ignore_entries.h"

#include <QCoroFuture>
#include <QThread>

namespace zenlot {
namespace {

// Longer than any name of a program. Alerts are kept until the user has dealt with them.
constexpr qsizetype kLongestName = 1024;

QString shortened(const QString& name) {
    if (name.size() <= kLongestName)
        return name;
    const bool cutsPair = name.at(kLongestName - 1).isHighSurrogate();
    return name.left(cutsPair ? kLongestName - 1 : kLongestName);
}

QString logged(UserNotificationSetting setting) {
    return QString::number(static_cast<int>(setting));
}

} // namespace

PortNotificationManager::PortNotificationManager(UserNotificationCenter& alerts,
                                                 PortInventory& inventory,
                                                 NotificationCenter& notifications, AppLog& log,
                                                 QObject* parent)
    : QObject(parent), alerts_(alerts), inventory_(inventory), notifications_(notifications),
      log_(log) {}

PortNotificationManager::~PortNotificationManager() {
    if (isDelegate_)
        alerts_.setDelegate(nullptr);
}

QCoro::Task<> PortNotificationManager::configure(AppSettings& settings) {
    Q_ASSERT(QThread::currentThread() == thread());
    settings_ = &settings;
    isDelegate_ = true;
    alerts_.setDelegate(this);
    alerts_.setNotificationCategories({{categoryID,
                                        {{killActionID, tr("Kill Process"), true},
                                         {ignorePortActionID, tr("Ignore Port"), false},
                                         {ignoreProcessActionID, tr("Ignore Process"), false}}}});

    const QPointer<PortNotificationManager> self(this);
    const QFuture<AuthorizationAnswer> asking =
        alerts_.requestAuthorization({.alert = true, .sound = true});
    const AuthorizationAnswer answer = co_await asking;
    if (!self)
        co_return;
    if (answer.error) {
        log_.writeAppLog(QStringLiteral("notification setup failed: ") + answer.error->message);
        co_return;
    }
    const QFuture<UserNotificationSettings> fetching = alerts_.notificationSettings();
    const UserNotificationSettings current = co_await fetching;
    if (!self)
        co_return;
    log_.writeAppLog(QStringLiteral("notification setup granted=%1 status=%2 alerts=%3 sounds=%4")
                         .arg(answer.isGranted ? QStringLiteral("true") : QStringLiteral("false"),
                              QString::number(static_cast<int>(current.authorizationStatus)),
                              logged(current.alertSetting), logged(current.soundSetting)));
}

void PortNotificationManager::notifyConflict(std::int64_t port, const QString& name,
                                             std::int64_t pid) {
    post({.idPrefix = QStringLiteral("zenlot-conflict-"),
          .title = tr("Port %1 is already in use"),
          .body = tr("%1 (PID %2) is blocking port %3 — kill it to free the port.")},
         port, shortened(name), pid);
}

void PortNotificationManager::notifyPortActivity(std::int64_t port, const QString& name,
                                                 std::int64_t pid) {
    post({.idPrefix = QStringLiteral("zenlot-port-"),
          .title = tr("Port %1 is now occupied"),
          .body = tr("%1 (PID %2) started listening on port %3")},
         port, shortened(name), pid);
}

QCoro::Task<> PortNotificationManager::post(Kind kind, std::int64_t port, QString name,
                                            std::int64_t pid) {
    Q_ASSERT(QThread::currentThread() == thread());
    const QString portText = QString::number(port);
    const QString pidText = QString::number(pid);
    const QString identifier =
        kind.idPrefix + portText + u'-' + QString::fromStdString(Uuid::random().text());
    log_.writeAppLog(QStringLiteral("posting notification id=%1 port=%2 pid=%3 process=%4")
                         .arg(identifier, portText, pidText, name));

    UserNotificationContent content;
    content.title = kind.title.arg(portText);
    content.body = kind.body.arg(name, pidText, portText);
    content.categoryIdentifier = categoryID;
    content.threadIdentifier = QStringLiteral("zenlot-port-") + portText;
    content.summaryArgument = tr("Port %1").arg(portText);
    content.userInfo = {{kPidKey, pid}, {kPortKey, port}, {kProcessNameKey, name}};
    content.hasSound = true;
    content.interruptionLevel = InterruptionLevel::timeSensitive;

    const QPointer<PortNotificationManager> self(this);
    const QFuture<std::optional<UserNotificationError>> adding = alerts_.add({identifier, content});
    const std::optional<UserNotificationError> error = co_await adding;
    if (!self)
        co_return;
    log_.writeAppLog(
        error ? QStringLiteral("notification add failed id=%1: %2").arg(identifier, error->message)
              : QStringLiteral("notification add succeeded id=") + identifier);
}

void PortNotificationManager::handleResponse(const UserNotificationResponse& response,
                                             const std::function<void()>& completionHandler) {
    Q_ASSERT(QThread::currentThread() == thread());
    const UserInfo& info = response.request.content.userInfo;
    const std::optional<std::int64_t> pid = info.integer(kPidKey);
    const std::optional<std::int64_t> port = info.integer(kPortKey);
    const QString name = info.string(kProcessNameKey).value_or(QString());

    // Whoever hears of it may destroy this object, so posting comes last.
    if (response.actionIdentifier == killActionID) {
        if (pid)
            inventory_.forceQuitProcess(*pid);
        postConflictHandled(port, pid, name);
    } else if (response.actionIdentifier == ignorePortActionID) {
        if (port && settings_) {
            ignorePort(*settings_, *port);
            postConflictHandled(port, pid, name);
        }
    } else if (response.actionIdentifier == ignoreProcessActionID) {
        if (!name.isEmpty() && settings_) {
            ignoreProcess(*settings_, name);
            postConflictHandled(port, pid, name);
        }
    }
    completionHandler();
}

void PortNotificationManager::postConflictHandled(std::optional<std::int64_t> port,
                                                  std::optional<std::int64_t> pid,
                                                  const QString& name) {
    UserInfo info{{kProcessNameKey, name}};
    if (port)
        info.set(kPortKey, *port);
    if (pid)
        info.set(kPidKey, *pid);
    notifications_.post(kConflictHandled, info);
}

PresentationOptions
PortNotificationManager::willPresentNotification(const UserNotificationRequest& /*request*/) {
    return {.banner = true, .list = true, .sound = true};
}

void PortNotificationManager::didReceiveNotificationResponse(
    const UserNotificationResponse& response, const std::function<void()>& completionHandler) {
    handleResponse(response, completionHandler);
}

} // namespace zenlot
