#include "shell/app/appearance_follower.h"

#include "shell/style/text_style.h"
#include "shell/style/theme_colors.h"

#include <QGuiApplication>

namespace zenlot {
namespace {

constexpr double kReadable = 4.5;

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() <
           palette.color(QPalette::WindowText).lightness();
}

QPalette ownPalette(bool dark, bool isContrastHigh, const QColor& highlight) {
    const QColor window = isContrastHigh ? (dark ? Qt::black : Qt::white)
                          : dark         ? QColor(0x2b, 0x2b, 0x2e)
                                         : QColor(0xf1, 0xf1, 0xf3);
    const QColor base = isContrastHigh ? window : dark ? QColor(0x1f, 0x1f, 0x22) : Qt::white;
    const QColor text = isContrastHigh ? (dark ? Qt::white : Qt::black)
                        : dark         ? QColor(0xf2, 0xf2, 0xf4)
                                       : QColor(0x1c, 0x1c, 0x1e);
    QPalette palette(window, window);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    QColor faint = text;
    faint.setAlphaF(0.5F);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, base);
    palette.setColor(QPalette::Highlight, highlight);
    return palette;
}

} // namespace

QPalette wishedPalette(const QPalette& desktops, const AppearanceWishes& wishes) {
    const bool wantsDark = wishes.colorScheme == ColorScheme::noPreference
                               ? isDark(desktops)
                               : wishes.colorScheme == ColorScheme::dark;
    const QColor highlight =
        wishes.accent ? QColor::fromRgb(*wishes.accent) : desktops.color(QPalette::Highlight);
    QPalette palette = desktops;
    if (wantsDark != isDark(desktops) || wishes.isContrastHigh)
        palette = ownPalette(wantsDark, wishes.isContrastHigh, highlight);
    else if (!wishes.accent)
        return palette;
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, contrastRatio(Qt::white, highlight) >= kReadable ||
                                                        contrastRatio(Qt::white, highlight) >=
                                                            contrastRatio(Qt::black, highlight)
                                                    ? Qt::white
                                                    : Qt::black);
    return palette;
}

QFont wishedFont(const QFont& desktops, const AppearanceWishes& wishes) {
    QFont font = desktops;
    if (wishes.textScale != TextStyle::scaleOf(desktops))
        font.setPointSizeF(wishes.textScale * TextStyle::kUsualPoints);
    return font;
}

AppearanceFollower::AppearanceFollower(const Appearance& appearance)
    : appearance_(appearance), desktopsFont_(QGuiApplication::font()) {
    connect(&appearance_, &Appearance::changed, this, &AppearanceFollower::follow);
    follow();
}

void AppearanceFollower::follow() {
    const AppearanceWishes& wishes = appearance_.wishes();
    if (!isPaletteOurs_)
        desktopsPalette_ = QGuiApplication::palette();
    const QPalette wished = wishedPalette(desktopsPalette_, wishes);
    const bool isDifferent = wished != desktopsPalette_;
    if (isDifferent || isPaletteOurs_)
        QGuiApplication::setPalette(isDifferent ? wished : QPalette());
    isPaletteOurs_ = isDifferent;
    // Whoever has told of larger text tells the truth when it is no longer larger.
    isTextSizeTold_ = isTextSizeTold_ || wishes.textScale > 1;
    const QFont font = isTextSizeTold_ ? wishedFont(desktopsFont_, wishes) : desktopsFont_;
    if (font != QGuiApplication::font())
        QGuiApplication::setFont(font);
}

} // namespace zenlot
