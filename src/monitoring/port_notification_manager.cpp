#include "monitoring/port_notification_manager.h"

#include "inventory/uuid.h"
#include "monitoring/ignore_entries.h"

#include <QCoroFuture>
#include <QThread>

#include <algorithm>
#include <utility>

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
                                                 ProcessEndWatch& processEnds,
                                                 NotificationCenter& notifications, AppLog& log,
                                                 QObject* parent)
    : QObject(parent), alerts_(alerts), inventory_(inventory), processEnds_(processEnds),
      notifications_(notifications), log_(log) {
    notifications_.observe(kConflictHandled, this,
                           [this](const UserInfo& info) { withdrawHandled(info); });
}

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
                                             const ProcessSighting& process) {
    post(Kind::conflict, port, shortened(name), process);
}

void PortNotificationManager::notifyPortActivity(std::int64_t port, const QString& name,
                                                 const ProcessSighting& process) {
    post(Kind::newListener, port, shortened(name), process);
}

PortNotificationManager::Wording PortNotificationManager::wordingOf(Kind kind) {
    if (kind == Kind::conflict)
        return {.idPrefix = QStringLiteral("zenlot-conflict-"),
                .title = tr("Port %1 is already in use"),
                .body = tr("%1 (PID %2) is blocking port %3 — kill it to free the port.")};
    return {.idPrefix = QStringLiteral("zenlot-port-"),
            .title = tr("Port %1 is now occupied"),
            .body = tr("%1 (PID %2) started listening on port %3")};
}

QCoro::Task<> PortNotificationManager::post(Kind kind, std::int64_t port, QString name,
                                            ProcessSighting process) {
    Q_ASSERT(QThread::currentThread() == thread());
    const Wording wording = wordingOf(kind);
    const QString portText = QString::number(port);
    const QString pidText = QString::number(process.process.pid);
    const QString identifier =
        wording.idPrefix + portText + u'-' + QString::fromStdString(Uuid::random().text());
    log_.writeAppLog(QStringLiteral("posting notification id=%1 port=%2 pid=%3 process=%4")
                         .arg(identifier, portText, pidText, name));

    UserNotificationContent content;
    content.title = wording.title.arg(portText);
    content.body = wording.body.arg(name, pidText, portText);
    content.categoryIdentifier = categoryID;
    content.threadIdentifier = QStringLiteral("zenlot-port-") + portText;
    content.summaryArgument = tr("Port %1").arg(portText);
    content.userInfo = {{kPidKey, process.process.pid}, {kPortKey, port}, {kProcessNameKey, name}};
    if (process.process.startTime)
        content.userInfo.set(kStartTimeKey, *process.process.startTime);
    content.hasSound = true;
    content.interruptionLevel = InterruptionLevel::timeSensitive;
    if (process.obstacle != ForceQuitObstacle::none)
        content.withheldActions = {killActionID};

    if (standing_.size() >= kMostStanding)
        standing_.erase(standing_.begin());
    standing_.push_back({identifier, kind, port, name, process.process});
    const QPointer<PortNotificationManager> self(this);
    const QFuture<std::optional<UserNotificationError>> adding = alerts_.add({identifier, content});
    followProcess(identifier, process.process);
    const std::optional<UserNotificationError> error = co_await adding;
    if (!self)
        co_return;
    log_.writeAppLog(
        error ? QStringLiteral("notification add failed id=%1: %2").arg(identifier, error->message)
              : QStringLiteral("notification add succeeded id=") + identifier);
}

// The watch goes by the id alone, so the process is looked at once more when it has begun.
QCoro::Task<> PortNotificationManager::followProcess(QString identifier, ProcessIdentity process) {
    if (processIdOf(process.pid) == 0)
        co_return;
    const QPointer<PortNotificationManager> self(this);
    standing_.back().end =
        processEnds_.watch(process.pid, [this, identifier] { processEnded(identifier); });
    const QFuture<std::vector<ProcessSighting>> looking =
        inventory_.lookAtProcesses({ForceQuitTarget{process}});
    const std::vector<ProcessSighting> seen = co_await looking;
    if (self && seen.front().obstacle == ForceQuitObstacle::gone)
        processEnded(identifier);
}

void PortNotificationManager::processEnded(const QString& identifier) {
    const auto found = std::ranges::find(standing_, identifier, &Standing::identifier);
    if (found == standing_.end())
        return;
    const Standing alert = std::move(*found);
    standing_.erase(found);
    log_.writeAppLog(
        QStringLiteral("notification withdrawn id=%1: process has ended").arg(alert.identifier));
    alerts_.remove(alert.identifier);
    // Whoever hears of it may destroy this object.
    if (alert.kind == Kind::conflict)
        postConflictHandled(alert.port, alert.process.pid, alert.name, alert.process.startTime);
}

void PortNotificationManager::withdrawHandled(const UserInfo& info) {
    const auto contradicts = [&info](QLatin1StringView key, std::optional<std::int64_t> known) {
        const std::optional<std::int64_t> said = info.integer(key);
        return said && known && said != known;
    };
    const std::optional<QString> name = info.string(kProcessNameKey);
    QStringList withdrawn;
    std::erase_if(standing_, [&](const Standing& alert) {
        if (alert.kind != Kind::conflict || contradicts(kPortKey, alert.port) ||
            contradicts(kPidKey, alert.process.pid) ||
            contradicts(kStartTimeKey, alert.process.startTime) ||
            (name && name->compare(alert.name, Qt::CaseInsensitive) != 0))
            return false;
        withdrawn.append(alert.identifier);
        return true;
    });
    for (const QString& identifier : std::as_const(withdrawn))
        alerts_.remove(identifier);
}

void PortNotificationManager::handleResponse(const UserNotificationResponse& response,
                                             const std::function<void()>& completionHandler) {
    Q_ASSERT(QThread::currentThread() == thread());
    const UserInfo& info = response.request.content.userInfo;
    const std::optional<std::int64_t> pid = info.integer(kPidKey);
    const std::optional<std::int64_t> port = info.integer(kPortKey);
    const std::optional<std::int64_t> startTime = info.integer(kStartTimeKey);
    const QString name = info.string(kProcessNameKey).value_or(QString());

    // Whoever hears of it may destroy this object, so posting comes last.
    if (response.actionIdentifier == killActionID) {
        if (pid)
            inventory_.forceQuitProcess({{*pid, startTime}, port});
        postConflictHandled(port, pid, name, startTime);
    } else if (response.actionIdentifier == ignorePortActionID) {
        if (port && settings_) {
            ignorePort(*settings_, *port);
            postConflictHandled(port, pid, name, startTime);
        }
    } else if (response.actionIdentifier == ignoreProcessActionID) {
        if (!name.isEmpty() && settings_) {
            ignoreProcess(*settings_, name);
            postConflictHandled(port, pid, name, startTime);
        }
    }
    completionHandler();
}

void PortNotificationManager::postConflictHandled(std::optional<std::int64_t> port,
                                                  std::optional<std::int64_t> pid,
                                                  const QString& name,
                                                  std::optional<std::int64_t> startTime) {
    UserInfo info{{kProcessNameKey, name}};
    if (port)
        info.set(kPortKey, *port);
    if (pid)
        info.set(kPidKey, *pid);
    if (startTime)
        info.set(kStartTimeKey, *startTime);
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
