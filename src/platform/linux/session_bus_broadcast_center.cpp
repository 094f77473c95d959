#include "platform/linux/session_bus_broadcast_center.h"

#include "platform/linux/session_bus.h"

#include <QDBusMessage>
#include <QThread>

#include <utility>

namespace zenlot {

namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1StringView kBroadcastPath{"/dev/quorvane/zenlot/broadcast"};
constexpr QLatin1StringView kBroadcastInterface{"dev.quorvane.zenlot.Broadcast"};
constexpr QLatin1StringView kMember{"Posted"};

// Receives the signals of one name for one handler. The connection forgets it when it goes.
class Observation final : public QObject {
    Q_OBJECT

  public:
    Observation(QString name, BroadcastCenter::Meaning meaning, BroadcastCenter::Handler handler,
                const BusNameOwner& eventSource, QObject* parent)
        : QObject(parent), name_(std::move(name)), meaning_(meaning), handler_(std::move(handler)),
          eventSource_(eventSource) {}

    BroadcastCenter::Meaning meaning() const { return meaning_; }

    // Other signatures than one string are dropped before they reach the observation.
    void subscribe(QDBusConnection bus) {
        bus.connect(QString(), kBroadcastPath, kBroadcastInterface, kMember, {name_}, u"s"_s, this,
                    SLOT(receive(QString, QDBusMessage)));
    }

    // From the event loop, unless the observation has ended by then.
    void deliverLater() {
        QMetaObject::invokeMethod(
            this, [this] { deliver(name_); }, Qt::QueuedConnection);
    }

  public Q_SLOTS:
    void receive(const QString& name, const QDBusMessage& signal) {
        const QString& source = eventSource_.owner();
        if (meaning_ == BroadcastCenter::Meaning::readAnew || source.isEmpty() ||
            signal.service() == source)
            deliver(name);
    }

  private:
    void deliver(const QString& name) {
        // The handler may end this very observation, so what runs is a copy.
        const BroadcastCenter::Handler handler = handler_;
        handler(QString(name));
    }

    QString name_;
    BroadcastCenter::Meaning meaning_;
    BroadcastCenter::Handler handler_;
    const BusNameOwner& eventSource_;
};

} // namespace

SessionBusBroadcastCenter::SessionBusBroadcastCenter(QDBusConnection bus,
                                                     const QString& eventSource)
    : bus_(std::move(bus)), eventSource_(eventSource) {
    QObject::connect(&eventSource_, &BusNameOwner::changed, &observations_,
                     [this] { callReadersLater(); });
    if (!eventSource.isEmpty())
        eventSource_.follow(bus_);
}

SessionBusBroadcastCenter::SessionBusBroadcastCenter(SessionBus& bus, const QString& eventSource)
    : SessionBusBroadcastCenter(bus.connection(), eventSource) {
    QObject::connect(&bus, &SessionBus::connected, &observations_,
                     [this, &bus] { moveTo(bus.connection()); });
}

void SessionBusBroadcastCenter::observe(const QString& name, Meaning meaning, QObject* context,
                                        Handler handler) {
    Q_ASSERT(QThread::currentThread() == observations_.thread());
    Q_ASSERT(context->thread() == observations_.thread());
    auto* observation =
        new Observation(name, meaning, std::move(handler), eventSource_, &observations_);
    QObject::connect(context, &QObject::destroyed, observation,
                     [observation] { delete observation; });
    observation->subscribe(bus_);
}

void SessionBusBroadcastCenter::post(const QString& name) {
    Q_ASSERT(QThread::currentThread() == observations_.thread());
    if (!bus_.isConnected())
        return;
    QDBusMessage signal = QDBusMessage::createSignal(kBroadcastPath, kBroadcastInterface, kMember);
    signal << name;
    bus_.send(signal);
}

// The bus takes messages in their order: once it has answered it has the earlier ones.
void SessionBusBroadcastCenter::settle() {
    constexpr int kPatienceMilliseconds = 500;
    const QString bus = u"org.freedesktop.DBus"_s;
    if (bus_.isConnected())
        bus_.call(QDBusMessage::createMethodCall(bus, u"/org/freedesktop/DBus"_s, bus, u"GetId"_s),
                  QDBus::Block, kPatienceMilliseconds);
}

void SessionBusBroadcastCenter::moveTo(const QDBusConnection& bus) {
    bus_ = bus;
    if (!eventSource_.name().isEmpty())
        eventSource_.follow(bus_);
    for (QObject* child : observations_.children())
        static_cast<Observation*>(child)->subscribe(bus_);
    callReadersLater();
}

void SessionBusBroadcastCenter::callReadersLater() {
    for (QObject* child : observations_.children()) {
        auto* observation = static_cast<Observation*>(child);
        if (observation->meaning() == Meaning::readAnew)
            observation->deliverLater();
    }
}

} // namespace zenlot

#include "session_bus_broadcast_center.moc"
