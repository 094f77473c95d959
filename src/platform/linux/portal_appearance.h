// The wishes of the user as desktops tell them through their portal: in the group of settings that
// all share, and where that has none, each in its own.
//
//     PortalAppearance appearance(bus, PortalAppearance::Start::asNeeded);
//
// Nothing waits. Main thread only.
#pragma once

#include "platform/appearance.h"
#include "platform/linux/bus_name_owner.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QMap>
#include <QString>

namespace zenlot {

class SessionBus;

class PortalAppearance final : public Appearance {
    Q_OBJECT

  public:
    // Whether the bus may start a portal that does not run.
    enum class Start : std::uint8_t { never, asNeeded };

    // `bus` must outlive the object.
    PortalAppearance(SessionBus& bus, Start start, QObject* parent = nullptr);

    const AppearanceWishes& wishes() const override { return wishes_; }

  private Q_SLOTS:
    void followBus();
    void ask();
    void noteChange(const QString& group, const QString& key, const QDBusVariant& value,
                    const QDBusMessage& signal);

  private:
    // What was told, by setting.
    struct Told {
        AppearanceWishes common{}; // the text's size and the motion are not in it
        bool isContrastHigh{false};
        double textFactor{1};
        double fontPoints{0};
        QMap<QString, bool> reducesMotion{}; // one is enough
    };

    void take(const QString& group, const QString& key, const QVariant& value);
    void settle();

    SessionBus& bus_;
    Start start_;
    BusNameOwner portal_;
    Told told_;
    AppearanceWishes wishes_;
};

} // namespace zenlot
