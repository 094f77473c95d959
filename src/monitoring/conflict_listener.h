// Takes in the conflicts that the background monitor detects, and tells the user and the rest of
// the program about each of them once: by an alert and by conflictDetected().
//
// There are three channels, see monitoring/shared_container.h and monitoring/broadcast_names.h: the
// published list of conflicts, read on its broadcast and at every poll; the broadcasts for single
// ports, answered from the file for the port or else from who holds it now; and the announcements
// in the monitor log, read at every poll. All of them end in deliver(), which holds the rules: the
// ignored ports, no key twice, no conflict by two channels, the ignored applications, and a process
// that still holds the port. One that has ended, or that has got the id of the one that was meant,
// blocks nobody.
//
// Belongs to the main thread. Files are read and decoded on a worker thread, for which the
// destructor waits; many conflicts at once are delivered in slices, between which the event loop
// turns. The operations that return a task are finished with it; a task may be thrown away, and
// ends early when the listener is destroyed. Files that are missing or wrong are passed over
// silently; whatever is or isn't announced leaves a line in the log.
//
// Broadcasts come in bursts. Of a burst with one name the first is answered at once, and those
// until a pause after the answer are answered together after it; that goes on until a pause without
// any. A port's burst asks only once who holds the port, for that answer is new every time.
//
//     ConflictListener listener({container, inventory, alerts, notifications, broadcasts, log,
//                                monitorLogPath(home)});
//     listener.start(settings);
#pragma once

#include "monitoring/conflict_record.h"
#include "monitoring/conflict_records_file.h"
#include "monitoring/monitor_log_tail.h"
#include "monitoring/notification_center.h"
#include "monitoring/port_inventory.h"
#include "monitoring/port_notification_manager.h"
#include "monitoring/reference_time.h"
#include "monitoring/shared_container.h"
#include "platform/broadcast_center.h"
#include "settings/app_log.h"
#include "settings/app_settings.h"
#include "workers/worker_threads.h"

#include <QCoroTask>
#include <QFuture>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace zenlot {

struct ConflictListenerPauses {
    std::chrono::milliseconds betweenPolls{2000};
    // After an answer to the broadcast of the list. Too short to be noticed.
    std::chrono::milliseconds afterList{100};
    // After an answer to the broadcast of a port.
    std::chrono::milliseconds afterPort{1000};
};

class ConflictListener final : public QObject {
  public:
    // Development servers like these ports.
    static constexpr std::array<std::int64_t, 25> watchedConflictPorts{
        1313, 2368, 3000, 3001, 3002, 3003, 3004, 3005, 4000, 4200, 4321, 5000, 5001,
        5100, 5173, 5174, 8000, 8001, 8080, 8081, 8088, 8888, 8889, 9000, 9090};

    // A conflict that was detected longer than this before the start is not shown, and neither is
    // one that is older than kLongestAge.
    static constexpr std::chrono::seconds kSlackBeforeStart{5};
    static constexpr std::chrono::seconds kLongestAge{60};

    // A monitor tells a conflict by a record and by a line of its log, each with a time of its own.
    // What one of them says within this time of the other is the same conflict.
    static constexpr std::chrono::seconds kSameConflict{10};

    // Of a name that another process chose, in bytes. What exceeds it is cut off.
    static constexpr std::size_t kLongestName = 1024;

    // Of a longer list only so many of the fresh records count, the last ones.
    static constexpr std::size_t kMostRecords = 50'000;

    // The clock is asked on the worker thread too.
    using Clock = std::function<ReferenceTime()>;

    struct Collaborators {
        SharedContainer container;
        PortInventory& inventory;
        PortNotificationManager& alerts;
        NotificationCenter& notifications;
        BroadcastCenter& broadcasts;
        AppLog& log;
        QString monitorLog; // the path of the log that the background monitor writes
        Clock clock{ReferenceClock::now};
    };

    // The references must outlive the object.
    explicit ConflictListener(Collaborators collaborators, ConflictListenerPauses pauses = {},
                              QObject* parent = nullptr);

    // Listens from now on. A further call only replaces the settings. Without settings, and while
    // conflict monitoring is switched off in them, nothing is announced.
    void start(AppSettings& settings);

    // One reading of the list of conflicts.
    QCoro::Task<> checkConflictRecords();

    // The answer to the broadcast of a port.
    QCoro::Task<> handleLegacyConflict(std::int64_t port);

    // One reading of what is new in the monitor log. It begins when earlier ones have ended.
    QCoro::Task<> pollLegacyDaemonLog();

    // The conflict that a line of the monitor log announces, detected now. Any thread may call.
    std::optional<ConflictRecord> parseLegacyLogLine(const QString& line) const;

    bool isFresh(const ConflictRecord& record) const;

    // Leaves a line about a reading in the log; one without fresh records only if it says something
    // new.
    void logRecordState(std::size_t count, std::size_t fresh);

    // Announces the conflict unless a rule forbids it. Its observers may destroy the listener.
    QCoro::Task<> deliver(ConflictRecord record);

    // What makes two reports the same conflict: pid, port and time, as "4242:3000:1763850000.5".
    static std::string deliveryKey(const ConflictRecord& record);

  private:
    // A reading of the list.
    struct Reading {
        std::size_t count{0};
        std::vector<ConflictRecord> fresh;
    };
    using SharedReading = std::shared_ptr<const Reading>; // none when there is no list

    enum class Channel : std::uint8_t { files, monitorLog };

    // A holder and the port that it holds.
    using HeldPort = std::pair<std::int64_t, std::int64_t>;

    struct Told {
        ReferenceTime at;
        Channel channel{Channel::files};
    };
    enum class Turn : std::uint8_t { firstOfBurst, laterInBurst };

    // Of broadcasts with one name.
    struct Burst {
        bool isOn{false};          // until a pause in which none is heard
        bool isMorePending{false}; // since the last answer began
        QTimer pause;              // after an answer
    };

    bool isSwitchedOn() const;
    QCoro::Task<> poll();

    void observe(const QString& name, BroadcastCenter::Meaning meaning,
                 std::chrono::milliseconds pause);
    void handleBroadcast(const QString& name);
    QCoro::Task<> answer(QString name, Turn turn);
    void finishPause(const QString& name);

    SharedReading readFreshRecords(ReferenceTime startedAt);
    QCoro::Task<> handleConflict(std::int64_t port, Turn turn);
    QCoro::Task<> readMonitorLog();
    std::vector<ConflictRecord> readAnnouncements();
    QCoro::Task<> deliverInSlices(std::span<const ConflictRecord> records, Channel channel);
    QCoro::Task<std::vector<ProcessSighting>>
    lookAtHolders(std::span<const ConflictRecord> records);
    void deliverSeen(const ConflictRecord& record, const ProcessSighting& holder, Channel channel);
    bool isDelivered(const std::string& key) const;
    void noteDelivery(std::string key);
    bool isToldElsewhere(const ConflictRecord& record, Channel channel);
    void log(const QString& message) { with_.log.writeAppLog(message); }

    Collaborators with_;
    ConflictListenerPauses pauses_;
    QPointer<AppSettings> settings_;
    bool isStarted_{false};
    ReferenceTime startedAt_{ReferenceTime::min()};
    // Of what was delivered at least the newest kMostRecords.
    std::unordered_set<std::string> deliveredConflictKeys_;
    std::unordered_set<std::string> earlierConflictKeys_;
    std::map<HeldPort, Told> told_; // of the last moments
    ReferenceTime toldSince_{ReferenceTime::min()};
    std::optional<QString> lastLoggedConflictRecordState_;
    std::map<QString, Burst> bursts_; // of every name that is observed
    QFuture<void> endOfLogPoll_;      // of the newest
    QTimer pauseBetweenPolls_;
    ConflictRecordsFile conflicts_; // like the log, only used by the worker
    MonitorLogTail monitorLog_;
    // One thread, so that what it uses needs no lock. The last member, so that it ends before that.
    WorkerThreads worker_{1};
};

} // namespace zenlot
