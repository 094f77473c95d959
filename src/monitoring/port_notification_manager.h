// Turns events on ports into alerts, and carries out what the user answers: ends the process, or
// ignores its port or its name from now on, and tells the rest of the program by kConflictHandled.
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
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace zenlot {

class PortNotificationManager final : public QObject, public UserNotificationCenterDelegate {
    Q_OBJECT

  public:
    static constexpr QLatin1StringView killActionID{"KILL_PROCESS"};
    static constexpr QLatin1StringView ignorePortActionID{"IGNORE_PORT"};
    static constexpr QLatin1StringView ignoreProcessActionID{"IGNORE_PROCESS"};
    static constexpr QLatin1StringView categoryID{"PORT_OCCUPIED"};

    // Of so many alerts at once the ends of their processes are told; of more, the oldest stay.
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

    // An alert that this process has begun to listen on the port.
    void notifyPortActivity(std::int64_t port, const QString& name, const ProcessSighting& process);

    void handleResponse(const UserNotificationResponse& response,
                        const std::function<void()>& completionHandler);

    void postConflictHandled(std::optional<std::int64_t> port, std::optional<std::int64_t> pid,
                             const QString& name, std::optional<std::int64_t> startTime = {});

    PresentationOptions willPresentNotification(const UserNotificationRequest& request) override;
    void didReceiveNotificationResponse(const UserNotificationResponse& response,
                                        const std::function<void()>& completionHandler) override;

  private:
    enum class Kind : std::uint8_t { conflict, newListener };

    // What differs between the kinds of alerts.
    struct Wording {
        QString idPrefix;
        QString title; // %1: port
        QString body;  // %1: name, %2: pid, %3: port
    };

    // An alert that the user may still see.
    struct Standing {
        QString identifier;
        Kind kind;
        std::int64_t port;
        QString name;
        ProcessIdentity process;
        std::unique_ptr<ProcessEndWatch::Watch> end{};
    };

    static Wording wordingOf(Kind kind);
    QCoro::Task<> post(Kind kind, std::int64_t port, QString name, ProcessSighting process);
    QCoro::Task<> followProcess(QString identifier, ProcessIdentity process);
    void processEnded(const QString& identifier);
    void withdrawHandled(const UserInfo& info);

    UserNotificationCenter& alerts_;
    PortInventory& inventory_;
    ProcessEndWatch& processEnds_;
    NotificationCenter& notifications_;
    AppLog& log_;
    QPointer<AppSettings> settings_;
    bool isDelegate_{false};
    std::vector<Standing> standing_; // the oldest first
};

} // namespace zenlot
