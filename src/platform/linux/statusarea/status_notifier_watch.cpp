#include "platform/linux/statusarea/status_notifier_watch.h"

#include "platform/bus_call.h"
#include "platform/linux/session_bus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kService = u"org.kde.StatusNotifierWatcher"_s;
const QString kPath = u"/StatusNotifierWatcher"_s;

} // namespace

StatusNotifierWatch::StatusNotifierWatch(SessionBus& bus) : bus_(bus) {
    services_.addWatchedService(kService);
    services_.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(&services_, &QDBusServiceWatcher::serviceRegistered, this,
            [this] { setWatcher(true); });
    connect(&services_, &QDBusServiceWatcher::serviceUnregistered, this,
            [this] { setWatcher(false); });
    connect(&bus, &SessionBus::connected, this, [this] {
        hasHost_ = false;
        Q_EMIT busReplaced();
        follow();
    });
    follow();
}

void StatusNotifierWatch::follow() {
    QDBusConnection bus = bus_.connection();
    services_.setConnection(bus);
    for (const QString& signal :
         {u"StatusNotifierHostRegistered"_s, u"StatusNotifierHostUnregistered"_s})
        bus.connect(kService, kPath, kService, signal, this, SLOT(askForHost()));
    if (!bus.isConnected()) {
        setWatcher(false);
        return;
    }
    QDBusMessage question =
        QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                                       u"org.freedesktop.DBus"_s, u"NameHasOwner"_s);
    question << kService;
    whenAnswered<bool>(bus.asyncCall(question), this, [this](const QDBusPendingReply<bool>& reply) {
        setWatcher(reply.isValid() && reply.value());
    });
}

void StatusNotifierWatch::setWatcher(bool isThere) {
    hasWatcher_ = isThere;
    if (isThere)
        askForHost();
    else
        setHost(false);
}

void StatusNotifierWatch::askForHost() {
    QDBusMessage question = QDBusMessage::createMethodCall(
        kService, kPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << kService << u"IsStatusNotifierHostRegistered"_s;
    question.setAutoStartService(false);
    whenAnswered<QDBusVariant>(bus_.connection().asyncCall(question), this,
                               [this](const QDBusPendingReply<QDBusVariant>& reply) {
                                   setHost(hasWatcher_ && reply.isValid() &&
                                           reply.value().variant().toBool());
                               });
}

void StatusNotifierWatch::setHost(bool isThere) {
    isKnown_ = true;
    hasHost_ = isThere;
    Q_EMIT changed();
}

} // namespace zenlot
