// Broadcasts as signals on the session bus.
//
//     path       /dev/quorvane/zenlot/broadcast
//     interface  dev.quorvane.zenlot.Broadcast
//     member     Posted
//     argument   one string, the full name of the broadcast
//
// The bus matches on the argument, so a program is woken only by the names that it observes.
// Anybody on the bus may post: a signal says no more than "look again".
//
// Observations outlive the bus. When it comes back every observer is called once, since signals
// may have been missed.
//
//     SessionBusBroadcastCenter broadcasts(sessionBus);
#pragma once

#include "platform/broadcast_center.h"

#include <QDBusConnection>
#include <QObject>

namespace zenlot {

class SessionBus;

class SessionBusBroadcastCenter final : public BroadcastCenter {
  public:
    // The bus must outlive the center, which is inert while there is none.
    explicit SessionBusBroadcastCenter(SessionBus& bus);
    // For a program that ends with its bus.
    explicit SessionBusBroadcastCenter(QDBusConnection bus);

    void observe(const QString& name, QObject* context, Handler handler) override;
    void post(const QString& name) override;
    void settle() override;

  private:
    void moveTo(const QDBusConnection& bus);

    QDBusConnection bus_;
    QObject observations_; // owns one object per observation
};

} // namespace zenlot
