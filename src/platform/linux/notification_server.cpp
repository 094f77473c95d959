#include "platform/linux/notification_server.h"

#include "platform/linux/alert_text.h"

#include <QDBusError>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QPointer>
#include <QVariantMap>

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1StringView kService{"org.freedesktop.Notifications"};
constexpr QLatin1StringView kServerPath{"/org/freedesktop/Notifications"};
constexpr QLatin1StringView kServerInterface{"org.freedesktop.Notifications"};
constexpr QLatin1StringView kProgram{"dev.quorvane.zenlot"}; // its desktop entry and its icon

constexpr int kNoTimeout = std::numeric_limits<int>::max();
constexpr int kExpireAsTheServiceLikes = -1;

constexpr uchar kNormalUrgency = 1;

UserNotificationError errorOf(const QDBusError& error) {
    return {error.message().isEmpty() ? error.name() : error.message()};
}

QVariantMap hintsOf(const NotificationServer::Capabilities& capabilities) {
    QVariantMap hints{{u"desktop-entry"_s, QString(kProgram)},
                      {u"urgency"_s, QVariant::fromValue(kNormalUrgency)}};
    if (capabilities.playsSounds)
        hints.insert(u"sound-name"_s, u"dialog-information"_s);
    return hints;
}

} // namespace

NotificationServer::NotificationServer(QDBusConnection bus) : bus_(std::move(bus)) {
    // Naming the sender here would make the connection wait for the bus to tell its address.
    bus_.connect(QString(), kServerPath, kServerInterface, u"ActionInvoked"_s, u"us"_s, this,
                 SLOT(receiveAction(uint, QString, QDBusMessage)));
    bus_.connect(QString(), kServerPath, kServerInterface, u"NotificationClosed"_s, u"uu"_s, this,
                 SLOT(receiveClosing(uint, uint, QDBusMessage)));
}

NotificationServer::~NotificationServer() = default;

void NotificationServer::setOwner(const QString& owner) {
    owner_ = owner;
    // Nobody but the service itself brings it back after it has gone: should it fail on what it is
    // asked, it would be started again and again.
    if (isRunning() && !(receivers_.empty() && queued_.empty()))
        ask();
}

void NotificationServer::succeed(NotificationServer& predecessor) {
    receivers_ = std::exchange(predecessor.receivers_, {});
    queued_ = std::exchange(predecessor.queued_, {});
}

void NotificationServer::introduce(std::function<void(const Introduction&)> receive) {
    if (capabilities_) {
        receive({capabilities_, std::nullopt});
    } else if (receivers_.size() < kMost) {
        receivers_.push_back(std::move(receive));
        ask();
    }
}

void NotificationServer::show(Alert alert) {
    std::erase_if(queued_, [](const Alert& queued) { return queued.answer->isGiven(); });
    if (queued_.size() + static_cast<std::size_t>(sent_.size()) >= kMost) {
        alert.answer->give(UserNotificationError{u"Too many alerts are waiting to be shown"_s});
        return;
    }
    queued_.push_back(std::move(alert));
    sendQueued();
}

QDBusPendingCallWatcher* NotificationServer::call(const QString& method,
                                                  const QVariantList& arguments) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        owner_.isEmpty() ? QString(kService) : owner_, kServerPath, kServerInterface, method);
    message.setArguments(arguments);
    // Calls on no connection would never finish.
    const QDBusPendingCall pending =
        bus_.isConnected() ? bus_.asyncCall(message, kNoTimeout)
                           : QDBusPendingCall::fromError(QDBusError(QDBusError::Disconnected,
                                                                    u"There is no session bus"_s));
    // As a child it ends with this object, and its call with it.
    auto* watcher = new QDBusPendingCallWatcher(pending, this);
    connect(watcher, &QDBusPendingCallWatcher::finished, watcher, &QObject::deleteLater);
    return watcher;
}

void NotificationServer::ask() {
    if (std::exchange(isAsking_, true))
        return;
    connect(call(u"GetCapabilities"_s, {}), &QDBusPendingCallWatcher::finished, this,
            [this](const QDBusPendingCallWatcher* watcher) { receiveCapabilities(*watcher); });
}

void NotificationServer::receiveCapabilities(const QDBusPendingCallWatcher& watcher) {
    isAsking_ = false;
    const QDBusPendingReply<QStringList> reply = watcher;
    Introduction introduction;
    if (!reply.isError()) {
        const QStringList names = reply.value();
        capabilities_ = {.hasActions = names.contains("actions"_L1),
                         .rendersMarkup = names.contains("body-markup"_L1),
                         .playsSounds = names.contains("sound"_L1)};
        introduction.capabilities = capabilities_;
    } else if (reply.error().type() != QDBusError::ServiceUnknown) {
        introduction.error = errorOf(reply.error());
    }

    const QPointer<NotificationServer> self(this);
    for (const auto& receive : std::exchange(receivers_, {}))
        receive(introduction);
    if (!self)
        return;
    if (capabilities_) {
        sendQueued();
        return;
    }
    for (const Alert& alert : std::exchange(queued_, {}))
        alert.answer->give(errorOf(reply.error()));
}

void NotificationServer::sendQueued() {
    if (queued_.empty())
        return;
    if (!capabilities_) {
        ask();
        return;
    }
    for (Alert& alert : std::exchange(queued_, {})) {
        if (alert.answer->isGiven())
            continue;
        // What an alert is to replace can only be named when the service has numbered it.
        if (isOnItsWay(alert.request.identifier))
            queued_.push_back(std::move(alert));
        else
            send(alert);
    }
}

void NotificationServer::send(const Alert& alert) {
    const UserNotificationContent& content = alert.request.content;
    const auto replaced = std::ranges::find(shown_, alert.request.identifier, &Shown::identifier);
    QStringList actions;
    if (capabilities_->hasActions) {
        for (const UserNotificationAction& action : content.actions)
            actions << action.identifier << action.title;
    }
    QDBusPendingCallWatcher* watcher =
        call(u"Notify"_s,
             {u"Zenlot"_s, replaced == shown_.end() ? 0U : replaced->id, QString(kProgram),
              alertText(content.title),
              capabilities_->rendersMarkup ? alertMarkup(content.body) : alertText(content.body),
              actions, hintsOf(*capabilities_), kExpireAsTheServiceLikes});
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this](const QDBusPendingCallWatcher* finished) { receiveId(finished); });
    sent_.insert(watcher, alert);
}

void NotificationServer::withdraw(const QString& identifier) {
    const auto isIt = [&](const Alert& alert) { return alert.request.identifier == identifier; };
    shown_.removeIf([&](const Shown& shown) {
        if (shown.identifier != identifier)
            return false;
        close(shown.id);
        return true;
    });
    for (Alert& alert : sent_)
        alert.isWithdrawn = alert.isWithdrawn || isIt(alert);
    std::vector<Alert> dropped;
    std::ranges::copy_if(queued_, std::back_inserter(dropped), isIt);
    std::erase_if(queued_, isIt);
    // The answers may run code that ends this object.
    for (const Alert& alert : dropped)
        alert.answer->give(UserNotificationError{u"The alert was withdrawn"_s});
}

// What the service says of it from now on is about an alert that is not ours any more.
void NotificationServer::close(uint id) {
    call(u"CloseNotification"_s, {id});
}

bool NotificationServer::isOnItsWay(const QString& identifier) const {
    return std::ranges::any_of(
        sent_, [&](const Alert& alert) { return alert.request.identifier == identifier; });
}

void NotificationServer::receiveId(const QDBusPendingCallWatcher* watcher) {
    const Alert alert = sent_.take(watcher);
    const QDBusPendingReply<uint> reply = *watcher;
    QList<Signal> ofThisAlert;
    if (!reply.isError()) {
        const uint id = reply.value();
        shown_.removeIf([&](const Shown& shown) {
            return shown.id == id || shown.identifier == alert.request.identifier;
        });
        if (alert.isWithdrawn) {
            close(id);
        } else {
            shown_.append({id, alert.request.identifier});
            if (shown_.size() > kMost)
                shown_.removeFirst();
        }
        std::ranges::copy_if(unmatched_, std::back_inserter(ofThisAlert),
                             [id](const Signal& signal) { return signal.id == id; });
        unmatched_.removeIf([id](const Signal& signal) { return signal.id == id; });
    }
    if (sent_.isEmpty())
        unmatched_.clear();
    sendQueued();

    // What follows may run code that ends this object.
    const QPointer<NotificationServer> self(this);
    alert.answer->give(reply.isError() ? std::optional(errorOf(reply.error())) : std::nullopt);
    for (const Signal& signal : std::as_const(ofThisAlert)) {
        if (self)
            act(signal);
    }
}

void NotificationServer::receiveAction(uint id, const QString& key, const QDBusMessage& signal) {
    if (signal.service() == owner_)
        receive({id, key});
}

void NotificationServer::receiveClosing(uint id, uint /*reason*/, const QDBusMessage& signal) {
    if (signal.service() == owner_)
        receive({id, std::nullopt});
}

void NotificationServer::receive(const Signal& signal) {
    if (find(signal.id) != shown_.end()) {
        act(signal);
    } else if (!sent_.isEmpty()) {
        // The service may speak of an alert before its number has come.
        unmatched_.append(signal);
        if (unmatched_.size() > kMost)
            unmatched_.removeFirst();
    }
}

void NotificationServer::act(const Signal& signal) {
    const auto shown = find(signal.id);
    if (shown == shown_.end())
        return;
    if (signal.key)
        Q_EMIT actionChosen(QString(shown->identifier), *signal.key);
    else
        shown_.erase(shown);
}

QList<NotificationServer::Shown>::iterator NotificationServer::find(uint id) {
    return std::ranges::find(shown_, id, &Shown::id);
}

} // namespace zenlot
