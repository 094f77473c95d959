#include "platform/fake_appearance.h"
#include "platform/merged_appearance.h"
#include "shell/app/appearance_follower.h"
#include "shell/style/text_style.h"
#include "shell/style/theme_colors.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

TEST(AppearanceFollowerTest, TheProgramLooksAsIsWishedForAndAsTheDesktopHasItAgain) {
    const QPalette palette = QGuiApplication::palette();
    const QFont font = QGuiApplication::font();
    FakeAppearance appearance;
    const AppearanceFollower follower(appearance);
    EXPECT_EQ(QGuiApplication::palette(), palette);
    const bool isDark = themeColors(palette).isDark;
    const auto other = isDark ? ColorScheme::light : ColorScheme::dark;
    for (const bool isContrastHigh : {false, true}) {
        appearance.become({other, 0xf5c211, isContrastHigh, 1.5, false});
        const QPalette now = QGuiApplication::palette();
        EXPECT_EQ(themeColors(now).isDark, !isDark);
        EXPECT_EQ(now.color(QPalette::Highlight), QColor(0xf5, 0xc2, 0x11));
        EXPECT_GE(contrastRatio(now.color(QPalette::Text), now.color(QPalette::Base)),
                  isContrastHigh ? 20 : 7);
        EXPECT_EQ(TextStyle::scaleOf(QGuiApplication::font()), 1.5);
    }
    appearance.become({isDark ? ColorScheme::dark : ColorScheme::light});
    EXPECT_EQ(QGuiApplication::palette(), palette);
    EXPECT_EQ(QGuiApplication::font(), font);
}

TEST(AppearanceFollowerTest, TextThatWasLargeFromTheStartBecomesSmaller) {
    const QFont font = QGuiApplication::font();
    QFont large = font;
    large.setPointSize(22);
    QGuiApplication::setFont(large);
    FakeAppearance appearance;
    const AppearanceFollower follower(appearance);
    EXPECT_EQ(QGuiApplication::font(), large); // while nobody tells
    for (const double scale : {2.0, 1.5, 1.0}) {
        appearance.become({.textScale = scale});
        EXPECT_EQ(TextStyle::scaleOf(QGuiApplication::font()), scale);
    }
    QGuiApplication::setFont(font);
}

TEST(MergedAppearanceTest, BelievesTheFirstWhereBothTell) {
    FakeAppearance portal;
    FakeAppearance display;
    const MergedAppearance merged(portal, display);
    const struct {
        AppearanceWishes first;
        AppearanceWishes second;
        AppearanceWishes both;
    } cases[] = {
        {{}, {ColorScheme::dark, 1, true, 1.5, true}, {ColorScheme::dark, 1, true, 1.5, true}},
        {{ColorScheme::light, 2}, {ColorScheme::dark, 1}, {ColorScheme::light, 2}},
        {{.textScale = 1.5}, {.textScale = 1.2}, {.textScale = 1.5}},
        // The portal's factor is in the display's, which the toolkit follows.
        {{.textScale = 1.5}, {.toolkitTextScale = 1.5}, {.toolkitTextScale = 1.5}},
        {{.textScale = 3}, {.toolkitTextScale = 1.5}, {.textScale = 2, .toolkitTextScale = 1.5}},
        {{}, {.toolkitTextScale = 2}, {.toolkitTextScale = 2}},
    };
    for (const auto& [first, second, both] : cases) {
        portal.become(first);
        display.become(second);
        EXPECT_EQ(merged.wishes(), both) << first.textScale << ' ' << second.textScale;
    }
}

} // namespace
} // namespace zenlot
