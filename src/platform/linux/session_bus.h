// The program's connection to the session bus, made anew whenever the bus comes back.
//
// A connection that Qt has made ends for good when its bus does. This one watches for the end and
// then tries the same address again, on a thread of its own and ever less often, up to every 8 s.
// Whoever has subscribed, exported or owned something on the old connection does it again on the
// new one when `connected` is emitted:
//
//     SessionBus bus;
//     connect(&bus, &SessionBus::connected, this, [this] { subscribe(bus_.connection()); });
//     if (bus.isConnected())
//         subscribe(bus.connection());
//
// The first connection is made by the constructor, which waits for the bus; nothing else does.
// Without a bus there is a connection too: one on which nothing arrives and every call fails.
// Belongs to the main thread, and only connection() may be called on others; may be built before
// the application object.
#pragma once

#include "workers/worker_threads.h"

#include <QDBusConnection>
#include <QObject>

#include <chrono>
#include <mutex>

namespace zenlot {

class SessionBus final : public QObject {
    Q_OBJECT

  public:
    // An address in the form of the D-Bus specification. An empty one means that there is no bus.
    explicit SessionBus(const QString& address = addressOfSession());
    ~SessionBus() override;

    // Where the environment says that the bus is; else in the user's runtime folder, if it is
    // there.
    static QString addressOfSession();

    bool isConnected() const { return connection_.isConnected(); }

    // Not to be kept beyond the next `connected`.
    QDBusConnection connection() const {
        const std::lock_guard lock(mutex_);
        return connection_;
    }

  Q_SIGNALS:
    void connected();

  private Q_SLOTS:
    void handleDisconnection();

  private:
    QString nextName();
    void adopt(const QDBusConnection& connection);
    void tryAgainLater();
    void tryAgain();

    QString address_;
    mutable std::mutex mutex_; // of the connection
    QDBusConnection connection_;
    int connections_{0};
    std::chrono::milliseconds pause_;
    WorkerThreads thread_{1}; // the last member: its end waits for an attempt under way
};

} // namespace zenlot
