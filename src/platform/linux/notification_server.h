// One run of the service that shows the desktop's alerts, over org.freedesktop.Notifications on the
// session bus: from the first question until the service loses its name. What is known of the
// service, what it shows and what it still has to answer goes with this object.
//
// Nothing here waits. A call stays open for as long as the service takes, so that the buttons of an
// alert work which it shows late; who asked has been told that there was no answer by then. Until
// the service has told its capabilities, alerts queue up, for a successor if need be; those whose
// asker was told so are dropped.
//
// An alert has the buttons of its actions, where the service has buttons. It is remembered until
// the service says that it was closed; of too many the oldest are forgotten. Signals count only
// when they come from the service itself and name an alert of ours.
#pragma once

#include "platform/linux/time_limited_answer.h"
#include "platform/user_notification_center.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

QT_FORWARD_DECLARE_CLASS(QDBusPendingCallWatcher)

namespace zenlot {

class NotificationServer final : public QObject {
    Q_OBJECT

  public:
    // Alerts on their way, alerts that are shown, open questions: more than anybody looks at.
    static constexpr qsizetype kMost{256};

    struct Capabilities {
        bool hasActions{false};
        bool rendersMarkup{false};
        bool playsSounds{false};
    };

    // Neither of both when no such service runs nor can be started.
    struct Introduction {
        std::optional<Capabilities> capabilities;
        std::optional<UserNotificationError> error;
    };

    using AddAnswer = TimeLimitedAnswer<std::optional<UserNotificationError>>;

    struct Alert {
        UserNotificationRequest request;
        std::shared_ptr<AddAnswer> answer;
        bool isWithdrawn{false}; // to be closed as soon as the service has numbered it
    };

    explicit NotificationServer(QDBusConnection bus);
    ~NotificationServer() override;

    // The service's unique name on the bus, once it runs.
    bool isRunning() const { return !owner_.isEmpty(); }
    void setOwner(const QString& owner);

    // Takes over what the predecessor was asked and had not begun to do.
    void succeed(NotificationServer& predecessor);

    // Starts the service when it can be started.
    void introduce(std::function<void(const Introduction&)> receive);

    void show(Alert alert);

    // Closes the alert, or keeps it from being shown.
    void withdraw(const QString& identifier);

  Q_SIGNALS:
    void actionChosen(const QString& alertIdentifier, const QString& actionIdentifier);

  private Q_SLOTS:
    void receiveAction(uint id, const QString& key, const QDBusMessage& signal);
    void receiveClosing(uint id, uint reason, const QDBusMessage& signal);

  private:
    struct Shown {
        uint id;
        QString identifier;
    };
    struct Signal {
        uint id;
        std::optional<QString> key; // none: the alert was closed
    };

    QDBusPendingCallWatcher* call(const QString& method, const QVariantList& arguments);
    void ask();
    void receiveCapabilities(const QDBusPendingCallWatcher& watcher);
    void sendQueued();
    void send(const Alert& alert);
    void receiveId(const QDBusPendingCallWatcher* watcher);
    void close(uint id);
    void receive(const Signal& signal);
    void act(const Signal& signal);
    QList<Shown>::iterator find(uint id);
    bool isOnItsWay(const QString& identifier) const;

    QDBusConnection bus_;
    QString owner_;
    std::optional<Capabilities> capabilities_;
    bool isAsking_{false};
    std::vector<std::function<void(const Introduction&)>> receivers_;
    std::vector<Alert> queued_;
    QHash<const QDBusPendingCallWatcher*, Alert> sent_; // and not answered
    QList<Shown> shown_;                                // the oldest first
    QList<Signal> unmatched_; // of ids that an open call may turn out to have
};

} // namespace zenlot
