#include "monitoring/port_monitor.h"

#include "monitoring/ignore_list.h"

#include <QCoroFuture>
#include <QCoroTimer>
#include <QElapsedTimer>

#include <algorithm>
#include <iterator>
#include <utility>

namespace zenlot {
namespace {

// How long listeners are announced without a turn of the event loop.
constexpr std::chrono::milliseconds kSliceOfListeners{4};

} // namespace

using namespace Qt::StringLiterals;

PortMonitor::PortMonitor(PortInventory& inventory, PortNotificationManager& alerts, AppLog& log,
                         std::chrono::milliseconds pauseBetweenPolls, QObject* parent)
    : QObject(parent), inventory_(inventory), alerts_(alerts), log_(log) {
    pause_.setSingleShot(true);
    pause_.setTimerType(Qt::PreciseTimer); // others may be off by a twentieth
    pause_.setInterval(pauseBetweenPolls);
    connect(&pause_, &QTimer::timeout, this, [this] { pollAndPause(); });
}

void PortMonitor::start(AppSettings& settings) {
    settings_ = &settings;
    if (isRunning())
        return;
    log_.writeAppLog(u"port activity monitor started"_s);
    forgetListeners();
    pollingTask_ = ++tasksBegun_;
    pollAndPause();
}

void PortMonitor::stop() {
    pollingTask_.reset();
    pause_.stop();
    forgetListeners();
}

// Polls that are under way would bring back what is to be forgotten.
void PortMonitor::forgetListeners() {
    newestPoll_ = lastForgotten_ = pollsBegun_;
    isBaselining_ = true;
    knownPorts_.clear();
}

QCoro::Task<> PortMonitor::pollAndPause() {
    const QPointer<PortMonitor> self(this);
    const std::optional<Task> task = pollingTask_;
    const QCoro::Task<> poll = checkForNewListeners();
    co_await poll;
    if (self && pollingTask_ == task)
        pause_.start();
}

QCoro::Task<> PortMonitor::checkForNewListeners() {
    const QPointer<PortMonitor> self(this);
    const Poll poll = ++pollsBegun_;
    const QFuture<SharedPorts> scan = inventory_.pollPortsOfCurrentUser();
    const SharedPorts listeners = co_await scan;
    if (!self || poll <= newestPoll_)
        co_return;
    newestPoll_ = poll;
    const QCoro::Task<> taking = takeIn(listeners);
    co_await taking;
}

QCoro::Task<> PortMonitor::takeIn(SharedPorts listeners) {
    std::set<std::int64_t> now;
    for (const OccupiedPort& listener : *listeners)
        now.insert(now.end(), listener.port);
    const std::set<std::int64_t> known = std::exchange(knownPorts_, std::move(now));
    if (std::exchange(isBaselining_, false))
        co_return;
    std::set<std::int64_t> newPorts;
    std::ranges::set_difference(knownPorts_, known, std::inserter(newPorts, newPorts.end()));
    std::vector<OccupiedPort> announced;
    std::vector<ForceQuitTarget> owners;
    for (const OccupiedPort& listener : *listeners) {
        // The first of several with one port.
        if (newPorts.erase(listener.port) == 0 || isIgnored(listener))
            continue;
        announced.push_back(listener);
        owners.push_back({{listener.pid, listener.startTime}, listener.port});
    }
    if (owners.empty())
        co_return;
    const QPointer<PortMonitor> self(this);
    const Poll poll = newestPoll_;
    const QFuture<std::vector<ProcessSighting>> looking =
        inventory_.lookAtProcesses(std::move(owners));
    const std::vector<ProcessSighting> seen = co_await looking;
    QElapsedTimer slice;
    slice.start();
    for (std::size_t index = 0; index < announced.size(); ++index) {
        if (slice.hasExpired(kSliceOfListeners.count())) {
            const QCoro::Task<> turnOfTheLoop = QCoro::sleepFor(std::chrono::milliseconds(0));
            co_await turnOfTheLoop;
            slice.start();
        }
        if (!self || poll <= lastForgotten_)
            co_return;
        announce(announced[index], seen[index]);
    }
}

bool PortMonitor::isIgnored(const OccupiedPort& listener) const {
    if (!settings_)
        return false;
    const QString name = QString::fromStdString(listener.displayName);
    const QStringList ignoredNames = settings_->monitorIgnoredApps();
    return settings_->monitorIgnoredPorts().contains(listener.port) ||
           std::ranges::any_of(ignoredNames, [&name](const QString& ignored) {
               return matchesIgnoredName(name, ignored);
           });
}

void PortMonitor::announce(const OccupiedPort& listener, const ProcessSighting& owner) {
    if (owner.obstacle == ForceQuitObstacle::gone) {
        log_.writeAppLog(u"port activity ignored port=%1: process has ended"_s.arg(listener.port));
        return;
    }
    const QString name = QString::fromStdString(listener.displayName);
    log_.writeAppLog(
        u"port activity detected port=%1 pid=%2 process="_s.arg(listener.port).arg(listener.pid) +
        name);
    alerts_.notifyPortActivity(listener.port, name, owner);
}

} // namespace zenlot
