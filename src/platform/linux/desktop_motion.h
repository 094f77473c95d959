// Whether the user wants programs to move less. Desktops tell it through their portal, each in a
// way of its own; where there is no portal, nobody has asked for it.
//
//     DesktopMotion motion(bus);
//     connect(&motion, &DesktopMotion::changed, ...);
//
// Nothing waits: motion is wanted until the portal has answered. Main thread only.
#pragma once

#include "platform/linux/bus_name_owner.h"

#include <QDBusConnection>
#include <QDBusVariant>
#include <QMap>
#include <QObject>
#include <QString>

namespace zenlot {

class SessionBus;

class DesktopMotion final : public QObject {
    Q_OBJECT

  public:
    // `bus` must outlive the object.
    explicit DesktopMotion(SessionBus& bus, QObject* parent = nullptr);

    bool isReduced() const { return isReduced_; }

  Q_SIGNALS:
    void changed();

  private Q_SLOTS:
    void followBus();
    void ask();
    void noteChange(const QString& group, const QString& key, const QDBusVariant& value);

  private:
    void take(const QString& group, const QString& key, const QVariant& value);
    void settle();

    SessionBus& bus_;
    BusNameOwner portal_;
    QMap<QString, bool> wishes_; // by setting; one is enough
    bool isReduced_{false};
};

} // namespace zenlot
