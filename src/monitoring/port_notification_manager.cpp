#include "monitoring/port_notification_manager.h"

#include "inventory/uuid.h"
#include "monitoring/ignore_entries.h"
#include "text/display_line.h"

#include <QCoroFuture>
#include <QThread>

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// Longer than any name of a program. Alerts are kept until the user has dealt with them.
constexpr qsizetype kLongestName = 1024;

QString logged(UserNotificationSetting setting) {
    return QString::number(static_cast<int>(setting));
}

} // namespace

PortNotificationManager::PortNotificationManager(UserNotificationCenter& alerts,
                                                 PortInventory& inventory,
                                                 ProcessEndWatch& processEnds,
                                                 NotificationCenter& notifications, AppLog& log,
                                                 Clock clock, QObject* parent)
    : QObject(parent), alerts_(alerts), inventory_(inventory), processEnds_(processEnds),
      notifications_(notifications), log_(log), clock_(std::move(clock)) {
    connect(&notifications_, &NotificationCenter::conflictHandled, this,
            &PortNotificationManager::withdrawHandled);
    alerts_.setResponder(
        [this](const QString& alert, const QString& action) { respond(alert, action); });
    alerts_.setArrivalHandler([this] { showRefused(); });
    for (const Kind kind : {Kind::conflict, Kind::newListener}) {
        QTimer& timer = recent(kind).untilSum;
        timer.setSingleShot(true);
        timer.setInterval(kBetweenSums);
        connect(&timer, &QTimer::timeout, this, [this, kind] { postSum(kind); });
    }
}

PortNotificationManager::~PortNotificationManager() {
    alerts_.setResponder({});
    alerts_.setArrivalHandler({});
}

QCoro::Task<> PortNotificationManager::configure(AppSettings& settings) {
    Q_ASSERT(QThread::currentThread() == thread());
    settings_ = &settings;
    const QPointer<PortNotificationManager> self(this);
    const QFuture<AuthorizationAnswer> asking = alerts_.requestAuthorization();
    const AuthorizationAnswer answer = co_await asking;
    if (!self)
        co_return;
    if (answer.error) {
        log_.writeAppLog(u"notification setup failed: "_s + answer.error->message);
        co_return;
    }
    const QFuture<UserNotificationSettings> fetching = alerts_.notificationSettings();
    const UserNotificationSettings current = co_await fetching;
    if (!self)
        co_return;
    log_.writeAppLog(u"notification setup granted=%1 status=%2 alerts=%3 sounds=%4"_s.arg(
        answer.isGranted ? u"true"_s : u"false"_s,
        QString::number(static_cast<int>(current.authorizationStatus)),
        logged(current.alertSetting), logged(current.soundSetting)));
}

void PortNotificationManager::notifyConflict(std::int64_t port, const QString& name,
                                             const ProcessSighting& process) {
    post(Kind::conflict, port, name, process);
}

void PortNotificationManager::notifyPortActivity(std::int64_t port, const QString& name,
                                                 const ProcessSighting& process) {
    post(Kind::newListener, port, name, process);
}

void PortNotificationManager::post(Kind kind, std::int64_t port, const QString& wholeName,
                                   const ProcessSighting& process) {
    Q_ASSERT(QThread::currentThread() == thread());
    if (!hasRoomFor(kind))
        return;
    const bool isConflict = kind == Kind::conflict;
    const QString name = cutOff(wholeName, kLongestName);
    const QString portText = QString::number(port);
    const QString pidText = QString::number(process.process.pid);
    const QString identifier = (isConflict ? u"zenlot-conflict-"_s : u"zenlot-port-"_s) + portText +
                               u'-' + QString::fromStdString(Uuid::random().text());
    log_.writeAppLog(u"posting notification id=%1 port=%2 pid=%3 process=%4"_s.arg(
        identifier, portText, pidText, name));

    UserNotificationContent content;
    content.title = (isConflict ? tr("Port %1 is already in use") : tr("Port %1 is now occupied"))
                        .arg(portText);
    const QString shownName = name.isEmpty() ? tr("Unknown") : name;
    if (process.process.pid > 0)
        content.body =
            (isConflict ? tr("%1 (PID %2) is blocking port %3 — kill it to free the port.")
                        : tr("%1 (PID %2) started listening on port %3"))
                .arg(shownName, pidText, portText);
    else
        content.body =
            (isConflict ? tr("%1 is blocking port %2") : tr("%1 started listening on port %2"))
                .arg(shownName, portText);
    content.actions = {{ignorePortActionID, tr("Ignore Port")},
                       {ignoreProcessActionID, tr("Ignore Process")}};
    if (process.obstacle == ForceQuitObstacle::none)
        content.actions.prepend({killActionID, tr("Kill Process")});

    if (standing_.size() >= kMostStanding)
        standing_.erase(standing_.begin());
    standing_.push_back({identifier, kind, {port, process.process, name}, content});
    hand(identifier, content);
    followProcess(identifier, process.process);
}

// What has no room is counted.
bool PortNotificationManager::hasRoomFor(Kind kind) {
    Recent& lately = recent(kind);
    const auto now = clock_();
    while (!lately.alerts.empty() && now - lately.alerts.front() >= kWhile)
        lately.alerts.pop_front();
    if (lately.alerts.empty())
        lately.summedUp = 0;
    if (lately.alerts.size() < kMostAtOnce) {
        lately.alerts.push_back(now);
        return true;
    }
    ++lately.summedUp;
    if (!lately.untilSum.isActive())
        lately.untilSum.start();
    return false;
}

// Each sum takes the place of the one before.
void PortNotificationManager::postSum(Kind kind) {
    const bool isConflict = kind == Kind::conflict;
    const QString identifier = isConflict ? u"zenlot-conflict-sum"_s : u"zenlot-port-sum"_s;
    const QString count = QString::number(recent(kind).summedUp);
    log_.writeAppLog(u"posting notification id=%1 count=%2"_s.arg(identifier, count));
    UserNotificationContent content;
    content.title = tr("… and %1 more").arg(count);
    content.body = isConflict ? tr("More ports are already in use. Zenlot shows them all.")
                              : tr("More ports are now occupied. Zenlot shows them all.");
    // A click on the alert itself has a name that is agreed.
    content.actions = {{u"default"_s, tr("Open Zenlot")}, {showAllActionID, tr("Open Zenlot")}};
    std::erase_if(standing_, [&](const Standing& alert) { return alert.identifier == identifier; });
    standing_.push_back({identifier, kind, {}, content, true});
    hand(identifier, content);
}

QCoro::Task<> PortNotificationManager::hand(QString identifier, UserNotificationContent content) {
    const QPointer<PortNotificationManager> self(this);
    const QFuture<std::optional<UserNotificationError>> adding = alerts_.add({identifier, content});
    const std::optional<UserNotificationError> error = co_await adding;
    if (!self)
        co_return;
    if (const auto alert = std::ranges::find(standing_, identifier, &Standing::identifier);
        alert != standing_.end())
        alert->isShown = !error;
    log_.writeAppLog(error ? u"notification add failed id=%1: %2"_s.arg(identifier, error->message)
                           : u"notification add succeeded id="_s + identifier);
}

QCoro::Task<> PortNotificationManager::showRefused() {
    if (std::ranges::all_of(standing_, &Standing::isShown))
        co_return;
    const QPointer<PortNotificationManager> self(this);
    const QFuture<std::vector<OccupiedPort>> listing = inventory_.listMergedPorts();
    const std::vector<OccupiedPort> ports = co_await listing;
    if (!self)
        co_return;
    const auto isTrue = [&ports](const HandledConflict& about) {
        return std::ranges::any_of(ports, [&about](const OccupiedPort& port) {
            return port.port == about.port && port.pid == about.holder.pid;
        });
    };
    std::vector<Standing> refused;
    std::erase_if(standing_, [&](Standing& alert) {
        if (alert.isShown)
            return false;
        refused.push_back(std::move(alert));
        return true;
    });
    for (Standing& alert : refused) {
        if (!alert.isSum && (!isTrue(alert.about) || !hasRoomFor(alert.kind)))
            continue;
        alert.isShown = true;
        const QString identifier = alert.identifier;
        const UserNotificationContent content = alert.content;
        standing_.push_back(std::move(alert));
        hand(identifier, content);
    }
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
    log_.writeAppLog(u"notification withdrawn id=%1: process has ended"_s.arg(alert.identifier));
    alerts_.remove(alert.identifier);
    // Whoever hears of it may destroy this object.
    if (alert.kind == Kind::conflict)
        Q_EMIT notifications_.conflictHandled(alert.about);
}

void PortNotificationManager::withdrawHandled(const HandledConflict& handled) {
    QStringList withdrawn;
    std::erase_if(standing_, [&](const Standing& alert) {
        const Conflict conflict{alert.about.port, alert.about.holder, alert.about.name,
                                alert.about.name};
        if (alert.kind != Kind::conflict || !handled.settles(conflict))
            return false;
        withdrawn.append(alert.identifier);
        return true;
    });
    for (const QString& identifier : std::as_const(withdrawn))
        alerts_.remove(identifier);
}

void PortNotificationManager::respond(const QString& identifier, const QString& action) {
    Q_ASSERT(QThread::currentThread() == thread());
    const auto alert = std::ranges::find(standing_, identifier, &Standing::identifier);
    if (alert == standing_.end())
        return;
    const HandledConflict about = alert->about;
    if (alert->isSum) {
        recent(alert->kind).summedUp = 0;
        standing_.erase(alert);
        Q_EMIT allWanted();
        return;
    }
    if (action == killActionID)
        inventory_.forceQuitProcess({about.holder, about.port});
    else if (action == ignorePortActionID && settings_)
        ignorePort(*settings_, about.port);
    else if (action == ignoreProcessActionID && settings_ && !about.name.isEmpty())
        ignoreProcess(*settings_, about.name);
    else
        return;
    // Whoever hears of it may destroy this object.
    Q_EMIT notifications_.conflictHandled(about);
}

} // namespace zenlot
