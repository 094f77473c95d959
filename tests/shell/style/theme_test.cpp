#include "shell/style/theme.h"

#include <QGuiApplication>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

struct Desktop {
    const char* name;
    const char* window;
    const char* base;
    const char* text;
    const char* highlight;
    const char* highlightedText;
    bool isDark;
};

QPalette paletteOf(const Desktop& desktop) {
    const auto color = [](const char* name) { return QColor(QLatin1String(name)); };
    QPalette palette;
    palette.setColor(QPalette::Window, color(desktop.window));
    palette.setColor(QPalette::Base, color(desktop.base));
    palette.setColor(QPalette::WindowText, color(desktop.text));
    palette.setColor(QPalette::Highlight, color(desktop.highlight));
    palette.setColor(QPalette::HighlightedText, color(desktop.highlightedText));
    return palette;
}

constexpr Desktop kDesktops[]{
    {"Light", "#efefef", "#ffffff", "#000000", "#308cc6", "#ffffff", false},
    {"Dark", "#2a2a2d", "#1b1b1d", "#f2f2f4", "#308cc6", "#ffffff", true},
    {"OneWhite", "#ffffff", "#ffffff", "#333333", "#ffd000", "#ffffff", false},
    {"HighContrast", "#000000", "#000000", "#ffffff", "#ffff00", "#000000", true},
    {"GreyHighlight", "#dcdad5", "#ffffff", "#101010", "#9a9a9a", "#eeeeee", false},
    {"FaintText", "#d4d0c8", "#f8f8f8", "#77706a", "#d4d0c8", "#d4d0c8", false},
};

TEST(ThemeColorsTest, EverythingWrittenCanBeRead) {
    for (const Desktop& desktop : kDesktops) {
        SCOPED_TRACE(desktop.name);
        const ThemeColors colors = themeColors(paletteOf(desktop));
        EXPECT_EQ(colors.isDark, desktop.isDark);
        EXPECT_NE(colors.sidebar, colors.window);
        EXPECT_GE(contrastRatio(colors.accentText, colors.accent), 4.5);

        const QColor box = laidOver(colors.window, colors.card);
        const QColor chosen = laidOver(colors.window, colors.selection);
        const QColor sideBox = laidOver(colors.sidebar, colors.card);
        for (const QColor& surface :
             {colors.window, colors.field, colors.popover, box, sideBox, chosen}) {
            SCOPED_TRACE(surface.name().toStdString());
            for (QColor tint :
                 {colors.green, colors.blue, colors.orange, colors.red, colors.teal}) {
                EXPECT_GE(contrastRatio(tint, surface), 4.5) << tint.name().toStdString();
                QColor fill = tint;
                fill.setAlphaF(0.1F);
                EXPECT_GE(contrastRatio(tint, laidOver(surface, fill)), 4.5)
                    << tint.name().toStdString();
            }
        }
        for (const QColor& surface : {colors.window, colors.sidebar, colors.popover, box, chosen,
                                      laidOver(box, colors.quaternaryFill)}) {
            SCOPED_TRACE(surface.name().toStdString());
            EXPECT_GE(contrastRatio(colors.label, surface), 4.5);
            EXPECT_GE(contrastRatio(colors.secondaryLabel, surface), 4.5);
            EXPECT_GE(contrastRatio(colors.tertiaryLabel, surface), 4.5);
            EXPECT_GE(contrastRatio(colors.focus, surface), 3.0);
        }
        for (const QColor& symbol : {colors.vividGreen, colors.vividBlue, colors.vividOrange,
                                     colors.vividRed, colors.yellow})
            EXPECT_GE(contrastRatio(symbol, colors.window), 3.0) << symbol.name().toStdString();
        EXPECT_GT(contrastRatio(colors.label, colors.window),
                  contrastRatio(colors.quaternaryLabel, colors.window));
    }
}

} // namespace
} // namespace zenlot
