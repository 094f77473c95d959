#include "platform/linux/bus_name_owner.h"

#include "platform/bus_call.h"

#include <QDBusMessage>

#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1StringView kBus{"org.freedesktop.DBus"};
constexpr QLatin1StringView kBusObject{"/org/freedesktop/DBus"};

} // namespace

BusNameOwner::BusNameOwner(QString name, QObject* parent)
    : QObject(parent), name_(std::move(name)) {}

void BusNameOwner::follow(const QDBusConnection& bus) {
    QDBusConnection connection = bus;
    const int number = ++connections_;
    assign(QString());
    // First the changes, then the state: what comes in between is told twice rather than never.
    connection.connect(kBus, kBusObject, kBus, u"NameOwnerChanged"_s, {name_}, u"sss"_s, this,
                       SLOT(noteChange(QString, QString, QString)));
    const QDBusMessage question =
        QDBusMessage::createMethodCall(kBus, kBusObject, kBus, u"GetNameOwner"_s) << name_;
    whenAnswered<QString>(connection.asyncCall(question), this,
                          [this, number](const QDBusPendingReply<QString>& reply) {
                              if (!reply.isError() && number == connections_)
                                  assign(reply.value());
                          });
}

void BusNameOwner::noteChange(const QString& /*name*/, const QString& /*before*/,
                              const QString& owner) {
    assign(owner);
}

void BusNameOwner::assign(const QString& owner) {
    if (owner == owner_)
        return;
    owner_ = owner;
    Q_EMIT changed();
}

} // namespace zenlot
