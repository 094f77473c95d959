// Turns events on ports into alerts, and carries out what the user answers: ends the process, or
// ignores its port or its name from now on, and tells the rest of the program by conflictHandled().
//
// Belongs to the main thread. Nothing filters here; whoever calls decides whether to alert. Until
// configure() there are no settings: alerts are posted, and of the answers only the kill works.
// Refused alerts and permissions leave a line in the log, nothing else. Of a name longer than any
// program's, only the beginning is used.
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

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace zenlot {

class PortNotificationManager final : public QObject {
    Q_OBJECT

  public:
    static constexpr QLatin1StringView killActionID{"KILL_PROCESS"};
    static constexpr QLatin1StringView ignorePortActionID{"IGNORE_PORT"};
    static constexpr QLatin1StringView ignoreProcessActionID{"IGNORE_PROCESS"};

    // Of more alerts at once the oldest stay, but nothing comes of them any more.
    static constexpr std::size_t kMostStanding = 256;

    // The references must outlive the object.
    PortNotificationManager(UserNotificationCenter& alerts, PortInventory& inventory,
                            ProcessEndWatch& processEnds, NotificationCenter& notifications,
                            AppLog& log, QObject* parent = nullptr);
    ~PortNotificationManager() override;

    // Finished when the desktop has said whether alerts are allowed. May be called again.
    QCoro::Task<> configure(AppSettings& settings);

    // An alert that a port which somebody wanted is held by this process.
    void notifyConflict(std::int64_t port, const QString& name, const ProcessSighting& process);

    // The same for somebody who asks, perhaps again and again: one that stands makes way for it.
    void notifyConflictAnew(std::int64_t port, const QString& name, const ProcessSighting& process);

    // An alert that this process has begun to listen on the port.
    void notifyPortActivity(std::int64_t port, const QString& name, const ProcessSighting& process);

  private:
    enum class Kind : std::uint8_t { conflict, newListener };

    // An alert that the user may still see.
    struct Standing {
        QString identifier;
        Kind kind;
        HandledConflict about; // what is told once it is handled
        std::unique_ptr<ProcessEndWatch::Watch> end{};
    };

    QCoro::Task<> post(Kind kind, std::int64_t port, const QString& wholeName,
                       const ProcessSighting& process);
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
    std::vector<Standing> standing_; // the oldest first
};

} // namespace zenlot
