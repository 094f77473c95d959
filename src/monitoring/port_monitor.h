// Watches for programs of the current user that begin to listen on a TCP port, and raises an alert
// for each such port, unless the user ignores its number or its owner.
//
// From start() to stop() it polls: at once, and again a pause after each poll. The first poll takes
// down what is listened on already; from then on every port that the poll before did not find is
// announced. Only numbers are remembered: a port that has passed to another owner is not new, one
// that was closed for a poll is. Ports of other users, or of unknown ones, don't count.
//
// Belongs to the main thread, which only compares sets of numbers; the scan runs on a worker. Polls
// may overlap. One that the next poll has overtaken, or that was under way when the monitor was
// stopped, changes and announces nothing. Nothing here fails: what a scan can't see is not there.
//
//     PortMonitor monitor(inventory, alerts, log);
//     monitor.start(settings);
#pragma once

#include "monitoring/port_inventory.h"
#include "monitoring/port_notification_manager.h"
#include "settings/app_log.h"
#include "settings/app_settings.h"

#ifndef Q_MOC_RUN // which can't read the coroutine headers
#include <QCoroTask>
#endif
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <optional>
#include <set>

namespace zenlot {

class PortMonitor final : public QObject {
  public:
    static constexpr std::chrono::milliseconds kPauseBetweenPolls{3000};

    // The references must outlive the object.
    PortMonitor(PortInventory& inventory, PortNotificationManager& alerts, AppLog& log,
                std::chrono::milliseconds pauseBetweenPolls = kPauseBetweenPolls,
                QObject* parent = nullptr);

    // Begins to watch. While it does, a further call only replaces the settings.
    void start(AppSettings& settings);

    // Ends that, and forgets what is listened on.
    void stop();

    // Whether it polls by itself.
    bool isRunning() const { return pollingTask_.has_value(); }

    // One poll, finished when its result has been taken in.
    QCoro::Task<> checkForNewListeners();

  private:
    using Poll = std::uint64_t; // numbered as they begin
    using Task = std::uint64_t; // the same for runs of the loop

    QCoro::Task<> pollAndPause();
    void forgetListeners();
    QCoro::Task<> takeIn(SharedPorts listeners);
    bool isIgnored(const OccupiedPort& listener) const;
    void announce(const OccupiedPort& listener, const ProcessSighting& owner);

    PortInventory& inventory_;
    PortNotificationManager& alerts_;
    AppLog& log_;
    QPointer<AppSettings> settings_;
    QTimer pause_;
    std::optional<Task> pollingTask_;
    Task tasksBegun_{0};
    Poll pollsBegun_{0};
    Poll newestPoll_{0};    // those up to this one don't count any more
    Poll lastForgotten_{0}; // neither does what those up to this one still have to announce
    bool isBaselining_{true};
    std::set<std::int64_t> knownPorts_;
};

} // namespace zenlot
