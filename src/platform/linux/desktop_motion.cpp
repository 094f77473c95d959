#include "platform/linux/desktop_motion.h"

#include "platform/bus_call.h"
#include "platform/linux/session_bus.h"

#include <QDBusMessage>
#include <QDBusMetaType>

#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using Settings = QMap<QString, QVariantMap>;

constexpr QLatin1StringView kPortal{"org.freedesktop.portal.Desktop"};
constexpr QLatin1StringView kPath{"/org/freedesktop/portal/desktop"};
constexpr QLatin1StringView kInterface{"org.freedesktop.portal.Settings"};

const QString kAppearance = u"org.freedesktop.appearance"_s;
const QString kGnome = u"org.gnome.desktop.interface"_s;
const QString kPlasma = u"org.kde.kdeglobals.KDE"_s;

} // namespace

DesktopMotion::DesktopMotion(SessionBus& bus, QObject* parent)
    : QObject(parent), bus_(bus), portal_(kPortal) {
    qDBusRegisterMetaType<Settings>();
    connect(&portal_, &BusNameOwner::changed, this, &DesktopMotion::ask);
    connect(&bus_, &SessionBus::connected, this, &DesktopMotion::followBus);
    if (bus_.isConnected())
        followBus();
}

void DesktopMotion::followBus() {
    bus_.connection().connect(kPortal, kPath, kInterface, u"SettingChanged"_s, this,
                              SLOT(noteChange(QString, QString, QDBusVariant)));
    portal_.follow(bus_.connection());
}

// A portal that does not run is not started for this.
void DesktopMotion::ask() {
    wishes_.clear();
    settle();
    if (portal_.owner().isEmpty())
        return;
    QDBusMessage question =
        QDBusMessage::createMethodCall(kPortal, kPath, kInterface, u"ReadAll"_s);
    question.setArguments({QStringList{kAppearance, kGnome, kPlasma}});
    question.setAutoStartService(false);
    whenAnswered<Settings>(bus_.connection().asyncCall(question), this,
                           [this](const QDBusPendingReply<Settings>& reply) {
                               if (reply.isError())
                                   return;
                               const Settings groups = reply.value();
                               for (auto group = groups.begin(); group != groups.end(); ++group) {
                                   for (auto each = group->begin(); each != group->end(); ++each)
                                       take(group.key(), each.key(), each.value());
                               }
                               settle();
                           });
}

void DesktopMotion::noteChange(const QString& group, const QString& key,
                               const QDBusVariant& value) {
    take(group, key, value.variant());
    settle();
}

void DesktopMotion::take(const QString& group, const QString& key, const QVariant& value) {
    if (group == kAppearance && key == u"reduced-motion"_s)
        wishes_[group] = value.toUInt() == 1;
    else if (group == kGnome && key == u"enable-animations"_s)
        wishes_[group] = !value.toBool();
    else if (group == kPlasma && key == u"AnimationDurationFactor"_s)
        wishes_[group] = value.toDouble() <= 0;
}

void DesktopMotion::settle() {
    const bool isReduced = wishes_.values().contains(true);
    if (std::exchange(isReduced_, isReduced) != isReduced)
        Q_EMIT changed();
}

} // namespace zenlot
