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
//     SessionBusBroadcastCenter broadcasts(QDBusConnection::sessionBus());
#pragma once

#include "platform/broadcast_center.h"

#include <QDBusConnection>
#include <QObject>

namespace zenlot {

class SessionBusBroadcastCenter final : public BroadcastCenter {
  public:
    // A connection to no bus makes the center inert; so does a bus that goes away.
    explicit SessionBusBroadcastCenter(QDBusConnection bus);

    void observe(const QString& name, QObject* context, Handler handler) override;
    void post(const QString& name) override;

  private:
    QDBusConnection bus_;
    QObject observations_; // owns one object per observation
};

} // namespace zenlot
