#include "background_monitor/background_monitor.h"

#include "background_monitor/connector_process_events.h"
#include "background_monitor/polling_process_events.h"
#include "background_monitor/power_supply.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace zenlot {
namespace {

// Dead sockets may come in bursts, and each makes the polling kind look at all processes.
constexpr BootTime kPauseBetweenProcessPolls{25};

// Times as long as a poll took.
constexpr int kRestAfterPoll = 50;

std::vector<std::string> programFolders() {
    std::vector<std::string> folders;
    const QList<QByteArray> path = qgetenv("PATH").split(':');
    for (const QByteArray& folder : path) {
        if (folder.startsWith('/'))
            folders.push_back(folder.toStdString());
    }
    return folders;
}

std::unique_ptr<ProcessEvents> makeProcessEvents(BackgroundMonitor::Noticing noticing) {
    if (noticing == BackgroundMonitor::Noticing::best) {
        auto connector = std::make_unique<ProcessConnector>();
        if (connector->isOpen())
            return std::make_unique<ConnectorProcessEvents>(std::move(connector));
    }
    return std::make_unique<PollingProcessEvents>(programFolders());
}

} // namespace

BackgroundMonitor::BackgroundMonitor(const ContainerWriter& container,
                                     const HomeDirectories& directories,
                                     BroadcastCenter& broadcasts, AppLog& log, Noticing noticing)
    : log_(log), attemptReader_(runtimes_, directories.home.toStdString()),
      scanner_(processTables_), portScan_(scanner_), portPublisher_(container, broadcasts),
      conflictPublisher_(container, broadcasts, log),
      machine_([this](std::uint16_t port) { return portPublisher_.ownerOf(port); }),
      processEvents_(makeProcessEvents(noticing)),
      tracker_(deadSockets_.descriptor() < 0 ? AttemptTracker::DeadSockets::unseen
                                             : AttemptTracker::DeadSockets::seen,
               processEvents_->comesByItself() ? AttemptTracker::Ends::told
                                               : AttemptTracker::Ends::unseen) {
    pollTimer_.setSingleShot(true);
    processPollTimer_.setSingleShot(true);
    lookTimer_.setSingleShot(true);
    lookTimer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&pollTimer_, &QTimer::timeout, this, [this] { poll(); });
    QObject::connect(&processPollTimer_, &QTimer::timeout, this, [this] { pollProcesses(); });
    QObject::connect(&lookTimer_, &QTimer::timeout, this, [this] { look(); });
}

BackgroundMonitor::~BackgroundMonitor() = default;

void BackgroundMonitor::start() {
    if (deadSockets_.descriptor() >= 0) {
        deadSocketNotifier_ =
            std::make_unique<QSocketNotifier>(deadSockets_.descriptor(), QSocketNotifier::Read);
        QObject::connect(deadSocketNotifier_.get(), &QSocketNotifier::activated, this,
                         [this] { noteDeadSockets(); });
    }
    processEvents_->start({[this](ProcessId pid) { noteStart(pid); },
                           [this](ProcessId pid, ProcessEnd end) {
                               tracker_.processEnded(pid, end, bootTimeNow());
                               planLook();
                           }});
    log_.writeAppLog(
        QStringLiteral("background monitor started, %1, %2")
            .arg(processEvents_->comesByItself() ? QStringLiteral("told of processes by the kernel")
                                                 : QStringLiteral("looking for processes"),
                 deadSockets_.descriptor() >= 0 ? QStringLiteral("told of dead sockets")
                                                : QStringLiteral("not told of dead sockets")));
    poll();
}

void BackgroundMonitor::poll() {
    const BootTime began = bootTimeNow();
    processEvents_->poll();
    if (portPublisher_.publish(*portScan_.listOccupiedPorts()) || !tracker_.isIdle())
        pace_.noteChange();
    // Where looking takes long, because many processes have to be walked, it happens less often.
    const BootTime took = bootTimeNow() - began;
    pollTimer_.start(std::max(pace_.next(powerNow()), took * kRestAfterPoll));
}

void BackgroundMonitor::pollProcesses() {
    lastProcessPoll_ = bootTimeNow();
    processEvents_->poll();
}

void BackgroundMonitor::noteDeadSockets() {
    bool hasNews = false;
    deadSockets_.read([this, &hasNews](UnusedSocket socket) {
        tracker_.socketDied(socket, bootTimeNow());
        hasNews = true;
    });
    if (!hasNews)
        return;
    planLook();
    if (processEvents_->comesByItself() || processPollTimer_.isActive())
        return;
    // The process whose socket it was may be at its end, so this is the moment to look for it.
    const BootTime since = bootTimeNow() - lastProcessPoll_;
    if (since >= kPauseBetweenProcessPolls)
        pollProcesses();
    else
        processPollTimer_.start(kPauseBetweenProcessPolls - since);
}

void BackgroundMonitor::noteStart(ProcessId pid) {
    if (auto attempt = attemptReader_.read(pid)) {
        tracker_.processStarted(*std::move(attempt), bootTimeNow());
        planLook();
        hurry();
    }
}

void BackgroundMonitor::look() {
    for (const Verdict& verdict : tracker_.look(machine_, bootTimeNow()))
        conflictPublisher_.publish(verdict);
    planLook();
}

void BackgroundMonitor::planLook() {
    const auto next = tracker_.nextLook();
    if (!next)
        lookTimer_.stop();
    else
        lookTimer_.start(std::max(BootTime(0), *next - bootTimeNow()));
}

// Somebody is at work: a poll that was put off for long comes soon.
void BackgroundMonitor::hurry() {
    pace_.noteChange();
    if (pollTimer_.remainingTimeAsDuration() > PollPace::kFastest)
        pollTimer_.start(PollPace::kFastest);
}

} // namespace zenlot
