#include "platform/linux/portal_appearance.h"
#include "platform/linux/session_bus.h"
#include "support/private_bus.h"
#include "support/settings_portal.h"

#include <QDBusArgument>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class PortalAppearanceTest : public testing::Test {
  protected:
    bool comesTo(const AppearanceWishes& wishes) const {
        return QTest::qWaitFor([&] { return appearance.wishes() == wishes; }, 20'000);
    }

    PrivateBus bus;
    SettingsPortal portal{bus.connect(u"portal"_s)};
    SessionBus session{bus.address()};
    PortalAppearance appearance{session, PortalAppearance::Start::never};
};

const QString kCommon = u"org.freedesktop.appearance"_s;
const QString kGnome = u"org.gnome.desktop.interface"_s;
const QString kPlasma = u"org.kde.kdeglobals.General"_s;

QVariant color(double red, double green, double blue) {
    QDBusArgument argument;
    argument.beginStructure();
    argument << red << green << blue;
    argument.endStructure();
    return QVariant::fromValue(argument);
}

// Each setting, and what is wished for then; one after the other, since none undoes another.
TEST_F(PortalAppearanceTest, FollowsWhatEachDesktopCallsIt) {
    portal.settings = {{kCommon, {{u"color-scheme"_s, 1U}}}};
    EXPECT_TRUE(comesTo({}));
    portal.start();
    AppearanceWishes wishes{ColorScheme::dark};
    EXPECT_TRUE(comesTo(wishes));
    using Member = std::function<void(AppearanceWishes&)>;
    const auto accent = [](std::optional<quint32> rgb) {
        return Member([rgb](AppearanceWishes& to) { to.accent = rgb; });
    };
    const auto text = [](double scale) {
        return Member([scale](AppearanceWishes& to) { to.textScale = scale; });
    };
    const auto contrast = [](bool isHigh) {
        return Member([isHigh](AppearanceWishes& to) { to.isContrastHigh = isHigh; });
    };
    const auto still = [](bool isReduced) {
        return Member([isReduced](AppearanceWishes& to) { to.isMotionReduced = isReduced; });
    };
    const std::tuple<QString, QString, QVariant, Member> changes[] = {
        {kCommon, u"color-scheme"_s, 2U, [](auto& to) { to.colorScheme = ColorScheme::light; }},
        {kCommon, u"accent-color"_s, color(1, 0.5, 0), accent(0xff8000)},
        {kCommon, u"accent-color"_s, color(2, 0, 0), accent({})},
        {kCommon, u"contrast"_s, 1U, contrast(true)},
        {kCommon, u"contrast"_s, 0U, contrast(false)},
        {u"org.gnome.desktop.a11y.interface"_s, u"high-contrast"_s, true, contrast(true)},
        {kGnome, u"text-scaling-factor"_s, 1.5, text(1.5)},
        {kGnome, u"font-name"_s, u"Noto Sans Bold 22"_s, text(3)},
        {kGnome, u"font-name"_s, u"Cantarell 11"_s, text(1.5)},
        {kGnome, u"text-scaling-factor"_s, 0.5, text(1)},
        {kPlasma, u"font"_s, u"Noto Sans,16.5,-1,5,50,0,0,0,0,0"_s, text(1)}, // of half the size
        {kGnome, u"text-scaling-factor"_s, u"no number"_s, text(1)},
        {kGnome, u"text-scaling-factor"_s, 1.0, text(1.5)},
        {kGnome, u"enable-animations"_s, false, still(true)},
        {kGnome, u"enable-animations"_s, true, still(false)},
        {u"org.kde.kdeglobals.KDE"_s, u"AnimationDurationFactor"_s, u"0"_s, still(true)},
        {u"org.kde.kdeglobals.KDE"_s, u"AnimationDurationFactor"_s, u"0.7"_s, still(false)},
        {kCommon, u"reduced-motion"_s, 1U, still(true)},
    };
    SettingsPortal impostor(bus.connect(u"impostor"_s));
    for (const auto& [group, key, value, apply] : changes) {
        impostor.change(kCommon, u"color-scheme"_s, 1U);
        apply(wishes);
        portal.change(group, key, value); // once, as desktops do
        EXPECT_TRUE(comesTo(wishes)) << key.toStdString();
    }
    portal.stop();
    EXPECT_TRUE(comesTo({}));
}

} // namespace
} // namespace zenlot
