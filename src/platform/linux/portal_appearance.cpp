#include "platform/linux/portal_appearance.h"

#include "platform/bus_call.h"
#include "platform/linux/session_bus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>

#include <algorithm>
#include <cmath>
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
const QString kGnomeAccess = u"org.gnome.desktop.a11y.interface"_s;
const QString kPlasma = u"org.kde.kdeglobals.KDE"_s;
const QString kPlasmaGeneral = u"org.kde.kdeglobals.General"_s;

// Three shares of light; none when they are not.
std::optional<quint32> colorIn(const QVariant& value) {
    if (value.userType() != qMetaTypeId<QDBusArgument>())
        return std::nullopt;
    const auto argument = value.value<QDBusArgument>();
    if (argument.currentSignature() != "(ddd)"_L1)
        return std::nullopt;
    quint32 color = 0;
    argument.beginStructure();
    for (int channel = 0; channel < 3; ++channel) {
        double share = -1;
        argument >> share;
        // Outside of these there is no colour, which is how a portal says so.
        if (!(share >= 0 && share <= 1))
            return std::nullopt;
        color = color << 8U | static_cast<quint32>(std::lround(share * 255));
    }
    argument.endStructure();
    return color;
}

ColorScheme schemeOf(uint number) {
    return number == 1   ? ColorScheme::dark
           : number == 2 ? ColorScheme::light
                         : ColorScheme::noPreference;
}

} // namespace

PortalAppearance::PortalAppearance(SessionBus& bus, Start start, QObject* parent)
    : Appearance(parent), bus_(bus), start_(start), portal_(kPortal) {
    qDBusRegisterMetaType<Settings>();
    // Without it the toolkit does not listen, and says so to nobody.
    qRegisterMetaType<QDBusVariant>();
    connect(&portal_, &BusNameOwner::changed, this, &PortalAppearance::ask);
    connect(&bus_, &SessionBus::connected, this, &PortalAppearance::followBus);
    if (bus_.isConnected())
        followBus();
}

void PortalAppearance::followBus() {
    // Not bound to the portal's name: the toolkit would drop what comes before it has learnt who
    // has that name.
    bus_.connection().connect(QString(), kPath, kInterface, u"SettingChanged"_s, this,
                              SLOT(noteChange(QString, QString, QDBusVariant, QDBusMessage)));
    portal_.follow(bus_.connection());
    if (start_ == Start::asNeeded)
        bus_.connection().send(QDBusMessage::createMethodCall(
            kPortal, kPath, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s));
}

void PortalAppearance::ask() {
    told_ = {};
    settle();
    if (portal_.owner().isEmpty())
        return;
    QDBusMessage question =
        QDBusMessage::createMethodCall(kPortal, kPath, kInterface, u"ReadAll"_s);
    question.setArguments(
        {QStringList{kAppearance, kGnome, kGnomeAccess, kPlasma, kPlasmaGeneral}});
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

void PortalAppearance::noteChange(const QString& group, const QString& key,
                                  const QDBusVariant& value, const QDBusMessage& signal) {
    // Every program on the bus may send such signals.
    if (signal.service() != portal_.owner())
        return;
    take(group, key, value.variant());
    settle();
}

void PortalAppearance::take(const QString& group, const QString& key, const QVariant& value) {
    const auto is = [&](const QString& otherGroup, const char* otherKey) {
        return group == otherGroup && key == QLatin1StringView(otherKey);
    };
    if (is(kAppearance, "color-scheme"))
        told_.common.colorScheme = schemeOf(value.toUInt());
    else if (is(kAppearance, "accent-color"))
        told_.common.accent = colorIn(value);
    else if (is(kAppearance, "contrast"))
        told_.common.isContrastHigh = value.toUInt() == 1;
    else if (is(kGnomeAccess, "high-contrast"))
        told_.isContrastHigh = value.toBool();
    else if (is(kGnome, "text-scaling-factor"))
        told_.textFactor = value.toDouble();
    else if (is(kGnome, "font-name")) // "Cantarell 11"
        told_.fontPoints = value.toString().section(u' ', -1).toDouble();
    else if (is(kPlasmaGeneral, "font")) // "Noto Sans,10,-1,5,50"
        told_.fontPoints = value.toString().section(u',', 1, 1).toDouble();
    else if (is(kAppearance, "reduced-motion"))
        told_.reducesMotion[group] = value.toUInt() == 1;
    else if (is(kGnome, "enable-animations"))
        told_.reducesMotion[group] = !value.toBool();
    else if (is(kPlasma, "AnimationDurationFactor"))
        told_.reducesMotion[group] = value.toDouble() <= 0;
}

void PortalAppearance::settle() {
    AppearanceWishes wishes = told_.common;
    wishes.isContrastHigh = wishes.isContrastHigh || told_.isContrastHigh;
    const double scale = told_.textFactor * std::max(told_.fontPoints / kUsualTextPoints, 1.0);
    wishes.textScale = scale > 1 ? std::min(scale, kLargestTextScale) : 1;
    wishes.isMotionReduced = told_.reducesMotion.values().contains(true);
    if (std::exchange(wishes_, wishes) != wishes)
        Q_EMIT changed();
}

} // namespace zenlot
