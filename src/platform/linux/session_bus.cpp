#include "platform/linux/session_bus.h"

#include <QFileInfo>
#include <QTimer>

#include <algorithm>

namespace zenlot {

namespace {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

constexpr auto kFirstPause = 250ms;
constexpr auto kLongestPause = 8s;

// A bus that is started again has a new identity, and the old one in the address would refuse it.
QString withoutIdentity(const QString& address) {
    QStringList alternatives = address.split(u';', Qt::SkipEmptyParts);
    for (QString& alternative : alternatives) {
        const qsizetype colon = alternative.indexOf(u':');
        QStringList keys = alternative.mid(colon + 1).split(u',', Qt::SkipEmptyParts);
        keys.removeIf([](const QString& key) { return key.startsWith("guid="_L1); });
        alternative = alternative.left(colon + 1) + keys.join(u',');
    }
    return alternatives.join(u';');
}

} // namespace

SessionBus::SessionBus(const QString& address)
    : address_(withoutIdentity(address)), connection_(QString()), pause_(kFirstPause) {
    if (address_.isEmpty())
        return;
    adopt(QDBusConnection::connectToBus(address_, nextName()));
    // Timers need the application object; what is queued waits for it.
    if (!isConnected())
        QMetaObject::invokeMethod(this, &SessionBus::tryAgainLater, Qt::QueuedConnection);
}

SessionBus::~SessionBus() {
    QDBusConnection::disconnectFromBus(connection_.name());
}

QString SessionBus::addressOfSession() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
    const QString socket = qEnvironmentVariable("XDG_RUNTIME_DIR") + "/bus"_L1;
    return QFileInfo::exists(socket) ? "unix:path="_L1 + socket : QString();
}

// Connections are known to Qt by name, so no two may share one.
QString SessionBus::nextName() {
    return u"zenlot-session-%1-%2"_s.arg(reinterpret_cast<quintptr>(this)).arg(++connections_);
}

void SessionBus::adopt(const QDBusConnection& connection) {
    QDBusConnection::disconnectFromBus(connection_.name());
    {
        const std::lock_guard lock(mutex_);
        connection_ = connection;
    }
    connection_.connect(QString(), u"/org/freedesktop/DBus/Local"_s,
                        u"org.freedesktop.DBus.Local"_s, u"Disconnected"_s, this,
                        SLOT(handleDisconnection()));
}

void SessionBus::handleDisconnection() {
    pause_ = kFirstPause;
    tryAgainLater();
}

void SessionBus::tryAgainLater() {
    QTimer::singleShot(pause_, this, &SessionBus::tryAgain);
    pause_ = std::min<std::chrono::milliseconds>(2 * pause_, kLongestPause);
}

void SessionBus::tryAgain() {
    if (isConnected())
        return; // word of an earlier end came late
    thread_.post([this, address = address_, name = nextName()] {
        const QDBusConnection connection = QDBusConnection::connectToBus(address, name);
        QMetaObject::invokeMethod(this, [this, connection] {
            adopt(connection);
            if (isConnected())
                Q_EMIT connected();
            else
                tryAgainLater();
        });
    });
}

} // namespace zenlot
