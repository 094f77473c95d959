// The background monitor: publishes which ports are listened on, and notices when a development
// server of the user could not have its port.
//
// Everything runs in the event loop of the thread that made it. It is woken by the kernel where
// that is allowed, by a poll every few seconds, and by nothing else. The end of a listener or of
// its owner is published at once, a new listener soon after the start of its process, as far as the
// share of the processor's time allows that is left for each of both.
//
// Where zenlot-bindwatch is there, refused ports and new listeners are told by it, and nothing of
// the user's is inferred or polled for; when it goes away, that begins again at once.
//
//     BackgroundMonitor monitor(container, directories, broadcasts, log, {});
//     monitor.start();
//     ...
//     monitor.stop();
#pragma once

#include "background_monitor/attempt_reader.h"
#include "background_monitor/attempt_tracker.h"
#include "background_monitor/bindwatch_client.h"
#include "background_monitor/conflict_publisher.h"
#include "background_monitor/container_keeper.h"
#include "background_monitor/live_machine.h"
#include "background_monitor/live_port_holders.h"
#include "background_monitor/poll_pace.h"
#include "background_monitor/port_publisher.h"
#include "background_monitor/process_events.h"
#include "background_monitor/refusal_tracker.h"
#include "background_monitor/runtime_table.h"
#include "background_monitor/work_budget.h"
#include "inventory/linux/failed_connections.h"
#include "inventory/linux/linux_process_tables.h"
#include "inventory/linux/pidfd_set.h"
#include "inventory/linux/proc_files.h"
#include "inventory/linux/unused_socket_watch.h"
#include "inventory/port_scanner.h"
#include "inventory/repeated_port_scan.h"
#include "platform/broadcast_center.h"
#include "platform/home_directories.h"
#include "settings/app_log.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace zenlot {

class BackgroundMonitor final : public QObject {
  public:
    // What the event loop returns when another monitor has taken over the container.
    static constexpr int kAnotherRuns = 1;

    // How processes are noticed: as well as the kernel allows, or by polling in any case.
    enum class Noticing : std::uint8_t { best, polling };

    struct Sources {
        Noticing noticing{Noticing::best};
        std::string bindwatch; // the socket of zenlot-bindwatch; empty to do without
    };

    // The references must outlive the object.
    BackgroundMonitor(ContainerKeeper& container, const HomeDirectories& directories,
                      BroadcastCenter& broadcasts, AppLog& log, Sources sources);
    ~BackgroundMonitor() override;

    void start();

    // Withdraws the list of ports, unless the container has become another monitor's.
    void stop();

  private:
    // Why a poll comes before its time, and what that may cost.
    struct Prompting {
        WorkBudget budget;
        bool isPending{false};
        // Of the next poll for the same reason, while there is to be another one; it grows.
        BootTime pause{PollPace::kFastest};
    };

    void poll();
    void pollSoon(Prompting& reason, BootTime delay);
    void pollAgainAndAgain(Prompting& reason);
    void publishAnew();
    void pollProcesses();
    PollPace::Power power();
    void noteDeadSockets();
    void noteEndedOwners();
    void publishEndsSoon();
    void publishEnds();
    void publish(const std::vector<OccupiedPort>& ports);
    void noteFailedConnections();
    void noteStart(ProcessId pid);
    void lookForMissedStarts();
    void lookWhoListens();
    void look();
    void planLook();
    void hurry();
    void noteBindwatch();
    void noteBindEvents(const BindPacket& packet);
    void noteBindwatchGone();
    void lookAtRefusals();
    bool isToldByBindwatch(const Verdict& verdict) const;

    ContainerKeeper& container_;
    BroadcastCenter& broadcasts_;
    AppLog& log_;
    RuntimeTable runtimes_;
    AttemptReader attemptReader_;
    ProcFiles procFiles_;
    LinuxProcessTables processTables_;
    PortScanner scanner_;
    RepeatedPortScan portScan_;
    PortPublisher portPublisher_;
    ConflictPublisher conflictPublisher_;
    LiveMachine machine_;
    UnusedSocketWatch deadSockets_;
    FailedConnections failedConnections_;
    BootTime connectionsCountedAt_{0};
    std::unique_ptr<ProcessEvents> processEvents_;
    AttemptTracker tracker_;
    std::unique_ptr<QSocketNotifier> deadSocketNotifier_;
    PidfdSet owners_;
    std::unique_ptr<QSocketNotifier> ownerNotifier_;
    WorkBudget ends_;
    Prompting starts_;    // of any process
    Prompting attempts_;  // of what may be a server
    Prompting listeners_; // that were told of
    PollPace pace_;
    PollPace::Power power_{PollPace::Power::mains};
    std::optional<BootTime> powerAskedAt_;
    BootTime nextProcessPoll_{0};
    LivePortHolders portHolders_;
    RefusalTracker refusals_;
    BindwatchClient bindwatch_;
    BootTime toldSince_{0};
    BootTime toldUntil_{0}; // while it is not connected
    std::uint64_t lostEvents_{0};
    QTimer refusalTimer_;
    QTimer pollTimer_;
    QTimer endsTimer_;
    QTimer processPollTimer_;
    QTimer lookTimer_;
};

} // namespace zenlot
