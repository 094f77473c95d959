// Turns events on ports into alerts, and carries out what the user answers: ends the process, or
// ignores its port or its name from now on, and tells the rest of the program by conflictHandled().
//
// Belongs to the main thread. Nothing filters here; whoever calls decides whether to alert. Until
// configure() there are no settings: alerts are posted, and of the answers only the kill works.
// Refused permissions leave a line in the log, nothing else. Of a name longer than any program's,
// only the beginning is used.
//
// Of each kind there are at most kMostAtOnce alerts within kWhile. What comes beyond that is summed
// up in one more alert, which says how many there are and opens the window. An alert that was
// refused, as where nothing shows alerts yet, is kept and shown when something comes that does, if
// its process holds the port then.
//
// An alert is about one process and offers to end it only when that may be done. It is taken back
// when the process has ended, and one about a conflict when that was handled. Should the process of
// a conflict have ended, that is how it is handled.
//
//     manager.configure(settings);
//     manager.notifyConflict(3000, u"node"_s, sighting);
#pragma once

#include "monitoring/notification_center.h"
#include "monitoring/port_inventory.h"
#include "platform/process_end_watch.h"
#include "platform/user_notification_center.h"
#include "settings/app_log.h"
#include "settings/app_settings.h"

#ifndef Q_MOC_RUN // which can't read the coroutine headers
#include <QCoroTask>
#endif
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

namespace zenlot {

class PortNotificationManager final : public QObject {
    Q_OBJECT

  public:
    static constexpr QLatin1StringView killActionID{"KILL_PROCESS"};
    static constexpr QLatin1StringView ignorePortActionID{"IGNORE_PORT"};
    static constexpr QLatin1StringView ignoreProcessActionID{"IGNORE_PROCESS"};

    static constexpr QLatin1StringView showAllActionID{"SHOW_ALL"};

    // Of more alerts at once the oldest stay, but nothing comes of them any more.
    static constexpr std::size_t kMostStanding = 256;

    static constexpr std::size_t kMostAtOnce = 20;
    static constexpr std::chrono::seconds kWhile{10};
    // The sum follows a flood at this distance.
    static constexpr std::chrono::milliseconds kBetweenSums{1000};

    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    // The references must outlive the object.
    PortNotificationManager(UserNotificationCenter& alerts, PortInventory& inventory,
                            ProcessEndWatch& processEnds, NotificationCenter& notifications,
                            AppLog& log, Clock clock = std::chrono::steady_clock::now,
                            QObject* parent = nullptr);
    ~PortNotificationManager() override;

    // Finished when the desktop has said whether alerts are allowed. May be called again.
    QCoro::Task<> configure(AppSettings& settings);

    // An alert that a port which somebody wanted is held by this process.
    void notifyConflict(std::int64_t port, const QString& name, const ProcessSighting& process);

    // An alert that this process has begun to listen on the port.
    void notifyPortActivity(std::int64_t port, const QString& name, const ProcessSighting& process);

  Q_SIGNALS:
    // The user wants to see what was summed up.
    void allWanted();

  private:
    enum class Kind : std::uint8_t { conflict, newListener };

    // An alert that the user may still see.
    struct Standing {
        QString identifier;
        Kind kind;
        HandledConflict about; // what is told once it is handled
        UserNotificationContent content;
        bool isSum{false}; // of several, about none of which it says anything
        bool isShown{true};
        std::unique_ptr<ProcessEndWatch::Watch> end{};
    };

    // What was announced lately of one kind.
    struct Recent {
        std::deque<std::chrono::steady_clock::time_point> alerts;
        std::size_t summedUp{0};
        QTimer untilSum;
    };

    void post(Kind kind, std::int64_t port, const QString& wholeName,
              const ProcessSighting& process);
    bool hasRoomFor(Kind kind);
    void postSum(Kind kind);
    QCoro::Task<> hand(QString identifier, UserNotificationContent content);
    QCoro::Task<> showRefused();
    Recent& recent(Kind kind) { return recent_[static_cast<std::size_t>(kind)]; }
    QCoro::Task<> followProcess(QString identifier, ProcessIdentity process);
    void processEnded(const QString& identifier);
    void withdrawHandled(const HandledConflict& handled);
    void respond(const QString& identifier, const QString& action);

    UserNotificationCenter& alerts_;
    PortInventory& inventory_;
    ProcessEndWatch& processEnds_;
    NotificationCenter& notifications_;
    AppLog& log_;
    QPointer<AppSettings> settings_;
    Clock clock_;
    std::vector<Standing> standing_; // the oldest first
    std::array<Recent, 2> recent_;   // by kind
};

} // namespace zenlot
