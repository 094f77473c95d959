#include "platform/linux/session_bus_broadcast_center.h"

#include <QDBusMessage>
#include <QThread>

#include <utility>

namespace zenlot {

namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1StringView kPath{"/dev/quorvane/zenlot/broadcast"};
constexpr QLatin1StringView kInterface{"dev.quorvane.zenlot.Broadcast"};
constexpr QLatin1StringView kMember{"Posted"};

// Receives the signals of one name for one handler. The connection forgets it when it goes.
class Observation final : public QObject {
    Q_OBJECT

  public:
    Observation(BroadcastCenter::Handler handler, QObject* parent)
        : QObject(parent), handler_(std::move(handler)) {}

  public Q_SLOTS:
    void deliver(const QString& name) {
        // The handler may end this very observation, so what runs is a copy.
        const BroadcastCenter::Handler handler = handler_;
        handler(name);
    }

  private:
    BroadcastCenter::Handler handler_;
};

} // namespace

SessionBusBroadcastCenter::SessionBusBroadcastCenter(QDBusConnection bus) : bus_(std::move(bus)) {}

void SessionBusBroadcastCenter::observe(const QString& name, QObject* context, Handler handler) {
    Q_ASSERT(QThread::currentThread() == observations_.thread());
    Q_ASSERT(context->thread() == observations_.thread());
    if (!bus_.isConnected())
        return;
    auto* observation = new Observation(std::move(handler), &observations_);
    QObject::connect(context, &QObject::destroyed, observation,
                     [observation] { delete observation; });
    // Other signatures than one string are dropped before they reach the observation.
    bus_.connect(QString(), kPath, kInterface, kMember, {name}, u"s"_s, observation,
                 SLOT(deliver(QString)));
}

void SessionBusBroadcastCenter::post(const QString& name) {
    Q_ASSERT(QThread::currentThread() == observations_.thread());
    if (!bus_.isConnected())
        return;
    QDBusMessage signal = QDBusMessage::createSignal(kPath, kInterface, kMember);
    signal << name;
    bus_.send(signal);
}

} // namespace zenlot

#include "session_bus_broadcast_center.moc"
