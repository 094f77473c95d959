#include "background_monitor/background_monitor.h"

#include "background_monitor/connector_process_events.h"
#include "background_monitor/polling_process_events.h"
#include "background_monitor/power_supply.h"

#include <QCoreApplication>

#include <systemd/sd-daemon.h>

#include <algorithm>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

namespace zenlot {
namespace {

// Dead sockets may come in bursts, and each makes the polling kind look at all processes.
constexpr BootTime kPauseBetweenProcessPolls{25};

// To walk all descriptors costs as much as some minutes of polls, and the holder of a port that is
// announced is looked up anyway.
constexpr std::chrono::minutes kLookAtAllEvery{5};

// What may be done before its time. Listeners end one by one, and somebody waits for
// the word; processes start all the time, and most of them listen on nothing.
constexpr int kRestAfterEnds = 20;
constexpr std::chrono::milliseconds kEndsAtOnce{50};
constexpr int kRestAfterStarts = 1000;
constexpr std::chrono::milliseconds kStartsAtOnce{20};
constexpr int kRestAfterAttempts = 400;
constexpr std::chrono::milliseconds kAttemptsAtOnce{40};

// Ends come in company, and so do the sockets of one process.
constexpr BootTime kEndsTogether{5};

// The first look after a start; the following ones each wait a third longer, so that a server which
// takes its time to listen is found a little later than one which is quick.
constexpr BootTime kFirstPauseAfterStart{30};

BootTime pauseAfter(BootTime pause) {
    return pause * 4 / 3;
}

// After a loss of events.
constexpr BootTime kMissedStartsOf{10'000};

// The counter of failed connections needs a fresh beginning for each attempt, more or less.
constexpr BootTime kPauseBetweenCounts{250};

// How late word of a start may come on a busy machine.
constexpr BootTime kLatestWord{1000};

// While new listeners are told of. Those of other users are not, and neither is a socket that a
// process hands to another.
constexpr BootTime kPollWhileTold{30'000};
constexpr BootTime kListenersTogether{5};

// So long inference may take to come to what was told already.
constexpr BootTime kLatestInference{5000};

// Times as long as a poll worked.
constexpr int kRestAfterPoll = 50;
constexpr int kRestAfterProcessPoll = 25;
constexpr BootTime kLongestRest{60'000};

// To ask a battery how it is costs more than a whole poll on some machines.
constexpr BootTime kPowerIsKnownFor{60'000};

// The processor time that the program has used. What passes by the clock may be anything: other
// programs have their turn, and the machine may sleep in the middle of a poll.
std::chrono::nanoseconds timeWorked() {
    timespec worked{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &worked);
    return std::chrono::seconds(worked.tv_sec) + std::chrono::nanoseconds(worked.tv_nsec);
}

BootTime restAfter(std::chrono::nanoseconds work, int times) {
    return std::min(kLongestRest, std::chrono::duration_cast<BootTime>(work * times));
}

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

BackgroundMonitor::BackgroundMonitor(ContainerKeeper& container, const HomeDirectories& directories,
                                     BroadcastCenter& broadcasts, AppLog& log, Sources sources)
    : container_(container), broadcasts_(broadcasts), log_(log),
      attemptReader_(runtimes_, directories.home.toStdString()), scanner_(processTables_),
      portScan_(scanner_, std::chrono::steady_clock::now, kLookAtAllEvery),
      portPublisher_(container.writer(), broadcasts),
      conflictPublisher_(container.writer(), broadcasts, log),
      machine_([this](std::uint16_t port) { return portPublisher_.ownerOf(port); }),
      processEvents_(makeProcessEvents(sources.noticing)),
      tracker_(deadSockets_.descriptor() < 0 ? AttemptTracker::DeadSockets::unseen
                                             : AttemptTracker::DeadSockets::seen,
               processEvents_->comesByItself() ? AttemptTracker::Ends::told
                                               : AttemptTracker::Ends::unseen),
      ends_(kRestAfterEnds, kEndsAtOnce), starts_{WorkBudget(kRestAfterStarts, kStartsAtOnce)},
      attempts_{WorkBudget(kRestAfterAttempts, kAttemptsAtOnce)}, listeners_{WorkBudget(
                                                                      kRestAfterEnds, kEndsAtOnce)},
      portHolders_(machine_, attemptReader_), refusals_(portHolders_),
      bindwatch_(std::move(sources.bindwatch)) {
    pollTimer_.setSingleShot(true);
    processPollTimer_.setSingleShot(true);
    endsTimer_.setSingleShot(true);
    endsTimer_.setTimerType(Qt::PreciseTimer);
    lookTimer_.setSingleShot(true);
    lookTimer_.setTimerType(Qt::PreciseTimer);
    refusalTimer_.setSingleShot(true);
    refusalTimer_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&pollTimer_, &QTimer::timeout, this, [this] { poll(); });
    QObject::connect(&endsTimer_, &QTimer::timeout, this, [this] { publishEnds(); });
    QObject::connect(&processPollTimer_, &QTimer::timeout, this, [this] { pollProcesses(); });
    QObject::connect(&lookTimer_, &QTimer::timeout, this, [this] { look(); });
    QObject::connect(&refusalTimer_, &QTimer::timeout, this, [this] { lookAtRefusals(); });
}

BackgroundMonitor::~BackgroundMonitor() = default;

void BackgroundMonitor::start() {
    if (deadSockets_.descriptor() >= 0) {
        deadSocketNotifier_ =
            std::make_unique<QSocketNotifier>(deadSockets_.descriptor(), QSocketNotifier::Read);
        QObject::connect(deadSocketNotifier_.get(), &QSocketNotifier::activated, this,
                         [this] { noteDeadSockets(); });
    }
    if (owners_.descriptor() >= 0) {
        ownerNotifier_ =
            std::make_unique<QSocketNotifier>(owners_.descriptor(), QSocketNotifier::Read);
        QObject::connect(ownerNotifier_.get(), &QSocketNotifier::activated, this,
                         [this] { noteEndedOwners(); });
    }
    container_.start({.remade = [this] { publishAnew(); },
                      .lost = [] { QCoreApplication::exit(kAnotherRuns); }});
    processEvents_->start({[this](ProcessId pid) { noteStart(pid); },
                           [this](ProcessId pid, ProcessEnd end) {
                               tracker_.processEnded(pid, end, bootTimeNow());
                               planLook();
                           },
                           [this] { lookForMissedStarts(); }});
    log_.writeAppLog(
        QStringLiteral("background monitor started, %1, %2")
            .arg(processEvents_->comesByItself() ? QStringLiteral("told of processes by the kernel")
                                                 : QStringLiteral("looking for processes"),
                 deadSockets_.descriptor() >= 0 ? QStringLiteral("told of dead sockets")
                                                : QStringLiteral("not told of dead sockets")));
    lookWhoListens();
    bindwatch_.start({.came = [this] { noteBindwatch(); },
                      .told = [this](const BindPacket& packet) { noteBindEvents(packet); },
                      .went = [this] { noteBindwatchGone(); }});
    poll();
}

void BackgroundMonitor::stop() {
    pollTimer_.stop();
    endsTimer_.stop();
    if (!container_.isOurs())
        return;
    portPublisher_.withdraw();
    broadcasts_.settle();
}

void BackgroundMonitor::poll() {
    const std::chrono::nanoseconds before = timeWorked();
    ::sd_notify(0, "WATCHDOG=1");
    container_.check();
    processEvents_->poll();
    conflictPublisher_.publishUnwritten();
    bindwatch_.tryToConnect();
    publish(*portScan_.listOccupiedPorts());
    if (!tracker_.isIdle())
        pace_.noteChange();
    const std::chrono::nanoseconds work = timeWorked() - before;
    for (Prompting* reason : {&starts_, &attempts_, &listeners_}) {
        if (std::exchange(reason->isPending, false))
            reason->budget.spend(work, bootTimeNow());
    }
    // Where looking takes long, because many processes have to be walked, it happens less often.
    const BootTime pace = bindwatch_.isConnected() ? kPollWhileTold : pace_.next(power());
    pollTimer_.start(std::max(pace, restAfter(work, kRestAfterPoll)));
    for (Prompting* reason : {&starts_, &attempts_}) {
        if (reason->pause < PollPace::kFastest)
            pollSoon(*reason, std::exchange(reason->pause, pauseAfter(reason->pause)));
    }
}

void BackgroundMonitor::pollAgainAndAgain(Prompting& reason) {
    if (bindwatch_.isConnected())
        return;
    reason.pause = pauseAfter(kFirstPauseAfterStart);
    pollSoon(reason, kFirstPauseAfterStart);
}

void BackgroundMonitor::publish(const std::vector<OccupiedPort>& ports) {
    if (!portPublisher_.publish(ports))
        return;
    owners_.assign(portPublisher_.owners());
    pace_.noteChange();
}

void BackgroundMonitor::publishEndsSoon() {
    if (!endsTimer_.isActive())
        endsTimer_.start(std::max(kEndsTogether, ends_.wait(bootTimeNow())));
}

void BackgroundMonitor::publishEnds() {
    const std::chrono::nanoseconds before = timeWorked();
    publish(*portScan_.dropClosedPorts());
    ends_.spend(timeWorked() - before, bootTimeNow());
}

void BackgroundMonitor::pollSoon(Prompting& reason, BootTime delay) {
    reason.isPending = true;
    const BootTime wait = std::max(delay, reason.budget.wait(bootTimeNow()));
    if (!pollTimer_.isActive() || pollTimer_.remainingTimeAsDuration() > wait)
        pollTimer_.start(wait);
}

// The container has lost what was in it.
void BackgroundMonitor::publishAnew() {
    log_.writeAppLog(QStringLiteral("shared container restored"));
    portPublisher_.forget();
    publish(*portScan_.listOccupiedPorts());
    conflictPublisher_.restore();
}

void BackgroundMonitor::pollProcesses() {
    const std::chrono::nanoseconds before = timeWorked();
    processEvents_->poll();
    nextProcessPoll_ =
        bootTimeNow() + std::max(kPauseBetweenProcessPolls,
                                 restAfter(timeWorked() - before, kRestAfterProcessPoll));
}

PollPace::Power BackgroundMonitor::power() {
    const BootTime now = bootTimeNow();
    if (!powerAskedAt_ || now - *powerAskedAt_ >= kPowerIsKnownFor) {
        power_ = powerNow();
        powerAskedAt_ = now;
    }
    return power_;
}

void BackgroundMonitor::noteDeadSockets() {
    bool hasNews = false;
    deadSockets_.read([this, &hasNews](UnusedSocket socket) {
        if (socket.port != 0 && portPublisher_.lists(socket.port))
            publishEndsSoon();
        if (socket.kind == UnusedSocket::Kind::bound)
            return;
        tracker_.socketDied(socket, bootTimeNow());
        hasNews |= socket.kind != UnusedSocket::Kind::nameQuestion;
    });
    if (!hasNews)
        return;
    noteFailedConnections();
    planLook();
    if (processEvents_->comesByItself() || processPollTimer_.isActive())
        return;
    // The process whose socket it was may be at its end, so this is the moment to look for it.
    const BootTime wait = nextProcessPoll_ - bootTimeNow();
    if (wait <= BootTime(0))
        pollProcesses();
    else
        processPollTimer_.start(wait);
}

// Its sockets may live on in another process, which is the owner now.
void BackgroundMonitor::noteEndedOwners() {
    if (owners_.takeEnded().empty())
        return;
    publishEndsSoon();
    pollSoon(attempts_, kEndsTogether);
}

// What the kernel counted before an attempt started belongs to others.
void BackgroundMonitor::noteFailedConnections() {
    connectionsCountedAt_ = bootTimeNow();
    const std::uint64_t count = failedConnections_.sinceLastTime();
    if (!tracker_.isIdle())
        tracker_.connectionsFailed(count, connectionsCountedAt_);
}

// Events were lost: whoever started lately may be an attempt that nobody told of.
void BackgroundMonitor::lookForMissedStarts() {
    const BootTime now = bootTimeNow();
    const std::vector<ProcessId> pids = procFiles_.pids();
    for (const ProcessId pid : pids) {
        const auto stat = procFiles_.stat(pid);
        if (stat && now - bootTimeOfTicks(stat->startTicks) <= kMissedStartsOf)
            noteStart(pid);
    }
}

// What is served already is learned, and is known when the same command is started again.
void BackgroundMonitor::lookWhoListens() {
    const auto ports = portScan_.listOccupiedPorts();
    for (const OccupiedPort& port : *ports)
        noteStart(static_cast<ProcessId>(port.pid));
}

void BackgroundMonitor::noteStart(ProcessId pid) {
    pollAgainAndAgain(starts_);
    if (auto attempt = attemptReader_.read(pid)) {
        const BootTime now = bootTimeNow();
        if (now - connectionsCountedAt_ >= kPauseBetweenCounts)
            noteFailedConnections();
        // A shell may have worked for long before it became the server.
        if (processEvents_->comesByItself())
            attempt->startedAt = std::max(attempt->startedAt, now - kLatestWord);
        tracker_.processStarted(*std::move(attempt), now);
        planLook();
        pollAgainAndAgain(attempts_);
        hurry();
    }
}

void BackgroundMonitor::look() {
    for (const Verdict& verdict : tracker_.look(machine_, bootTimeNow())) {
        if (!isToldByBindwatch(verdict))
            conflictPublisher_.publish(verdict);
    }
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
    if (!bindwatch_.isConnected() && pollTimer_.remainingTimeAsDuration() > PollPace::kFastest)
        pollTimer_.start(PollPace::kFastest);
}

void BackgroundMonitor::noteBindwatch() {
    log_.writeAppLog(QStringLiteral("told of refused ports by the system"));
    toldSince_ = bootTimeNow();
    lostEvents_ = 0;
    pollSoon(listeners_, kListenersTogether);
}

void BackgroundMonitor::noteBindEvents(const BindPacket& packet) {
    const BootTime now = bootTimeNow();
    for (const BindEvent& event : packet.events) {
        refusals_.happened(event, now);
        if (event.kind == ZENLOT_LISTENING && portHolders_.isOfOwnNetwork(event))
            pollSoon(listeners_, kListenersTogether);
    }
    if (lostEvents_ == 0 && packet.lost != 0)
        log_.writeAppLog(QStringLiteral("some refused ports came too fast to be told"));
    lostEvents_ = packet.lost;
    lookAtRefusals();
}

void BackgroundMonitor::noteBindwatchGone() {
    log_.writeAppLog(QStringLiteral("no longer told of refused ports by the system"));
    toldUntil_ = bootTimeNow();
    hurry();
}

void BackgroundMonitor::lookAtRefusals() {
    const BootTime now = bootTimeNow();
    for (const Verdict& verdict : refusals_.look(now))
        conflictPublisher_.publish(verdict);
    const auto next = refusals_.nextLook();
    if (!next)
        refusalTimer_.stop();
    else
        refusalTimer_.start(std::max(BootTime(0), *next - now));
}

// What inference finds out late, or while it is told of everything. Some programs find out by
// connecting that their port is taken, and of those nobody is told.
bool BackgroundMonitor::isToldByBindwatch(const Verdict& verdict) const {
    const BootTime now = bootTimeNow();
    const bool isConnected = bindwatch_.isConnected();
    if (!verdict.socketDiedAt)
        return (isConnected || now - toldUntil_ < kLatestInference) &&
               refusals_.knows(verdict.port, now, verdict.attempt);
    if (*verdict.socketDiedAt < toldSince_)
        return false;
    return isConnected ||
           (*verdict.socketDiedAt <= toldUntil_ && refusals_.knows(verdict.port, now));
}

} // namespace zenlot
