#include "shell/app/appearance_follower.h"
#include "shell/style/text_style.h"
#include "shell/style/theme_colors.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

class FakeAppearance final : public Appearance {
  public:
    const AppearanceWishes& wishes() const override { return current; }
    void become(const AppearanceWishes& wishes) {
        current = wishes;
        Q_EMIT changed();
    }

    AppearanceWishes current;
};

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

} // namespace
} // namespace zenlot
