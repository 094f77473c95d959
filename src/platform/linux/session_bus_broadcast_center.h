// Broadcasts as signals on the session bus.
//
//     path       /dev/quorvane/zenlot/broadcast
//     interface  dev.quorvane.zenlot.Broadcast
//     member     Posted
//     argument   one string, the full name of the broadcast
//
// The bus matches on the argument, so a program is woken only by the names that it observes.
//
// Anybody on the bus may send such a signal. Events count only from the owner of the bus name that
// is given, while it has one; without an owner they count from everybody.
//
// Observations outlive the bus. Observers of what is to be read anew are called once when the bus
// comes back, since signals may have been missed, and when the owner of the name comes or goes.
//
//     SessionBusBroadcastCenter broadcasts(sessionBus, kMonitorBusName);
#pragma once

#include "platform/broadcast_center.h"
#include "platform/linux/bus_name_owner.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace zenlot {

class SessionBus;

class SessionBusBroadcastCenter final : public BroadcastCenter {
  public:
    // The bus must outlive the center, which is inert while there is none. `eventSource` is the bus
    // name of who events come from.
    explicit SessionBusBroadcastCenter(SessionBus& bus, const QString& eventSource = {});
    // For a program that ends with its bus.
    explicit SessionBusBroadcastCenter(QDBusConnection bus, const QString& eventSource = {});

    void observe(const QString& name, Meaning meaning, QObject* context, Handler handler) override;
    void post(const QString& name) override;
    void settle() override;

  private:
    void moveTo(const QDBusConnection& bus);
    void callReadersLater();

    QDBusConnection bus_;
    BusNameOwner eventSource_;
    QObject observations_; // owns one object per observation
};

} // namespace zenlot
