#include "shell/style/theme_colors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace zenlot {
namespace {

using Surfaces = std::vector<QColor>;

constexpr double kTextContrast = 4.5;
constexpr double kSymbolContrast = 3.0;
// What each tint starts from in light and in dark, before it is made readable.
using Hue = std::array<const char*, 2>;
constexpr Hue kGreen{"#22ab4f", "#3ed16a"};
constexpr Hue kBlue{"#1a78f0", "#5aa9ff"};
constexpr Hue kOrange{"#f08000", "#ffa53d"};
constexpr Hue kRed{"#e8382f", "#ff6f66"};
constexpr Hue kTeal{"#12919c", "#4ccbd6"};
constexpr Hue kYellow{"#e0a800", "#ffd43a"};

constexpr float kTintFill = 0.10F;
constexpr float kSelectionFill = 0.14F;

double linear(float channel) {
    const double value = static_cast<double>(channel);
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

QColor translucent(QColor color, float alpha) {
    color.setAlphaF(alpha);
    return color;
}

QColor mixed(const QColor& one, const QColor& other, float shareOfOther) {
    return laidOver(one, translucent(other, shareOfOther));
}

double leastContrast(const QColor& color, const Surfaces& surfaces) {
    double least = 21;
    for (const QColor& surface : surfaces)
        least = std::min(least, contrastRatio(color, surface));
    return least;
}

// Keeps the hue and makes the colour darker or lighter, by no more than it takes.
template <typename Accepts>
QColor adjusted(const QColor& color, bool lighter, Accepts accepts) {
    float hue = 0;
    float saturation = 0;
    float lightness = 0;
    color.getHslF(&hue, &saturation, &lightness);
    QColor result = color;
    while (!accepts(result) && lightness > 0 && lightness < 1) {
        lightness = std::clamp(lightness + (lighter ? 0.01F : -0.01F), 0.0F, 1.0F);
        result = QColor::fromHslF(std::max(hue, 0.0F), saturation, lightness);
    }
    return result;
}

// A tint for text has to stand out from a button, and from each surface and its own faint fill on
// that.
QColor textTint(const Hue& hue, bool isDark, const Surfaces& surfaces, const QColor& button) {
    return adjusted(
        QColor(QLatin1String(hue.at(isDark ? 1 : 0))), isDark, [&](const QColor& candidate) {
            if (contrastRatio(candidate, button) < kTextContrast)
                return false;
            return std::ranges::all_of(surfaces, [&](const QColor& surface) {
                const QColor filled = laidOver(surface, translucent(candidate, kTintFill));
                return contrastRatio(candidate, surface) >= kTextContrast &&
                       contrastRatio(candidate, filled) >= kTextContrast;
            });
        });
}

QColor symbolTint(const Hue& hue, bool isDark, const Surfaces& surfaces) {
    return adjusted(QColor(QLatin1String(hue.at(isDark ? 1 : 0))), isDark,
                    [&](const QColor& candidate) {
                        return leastContrast(candidate, surfaces) >= kSymbolContrast;
                    });
}

// The faintest mixture of the text with its background that can still be read.
QColor fainter(const QColor& label, const QColor& window, int wantedPercent,
               const Surfaces& surfaces, double contrast) {
    for (int percent = wantedPercent; percent > 0; --percent) {
        const QColor color = mixed(label, window, static_cast<float>(percent) / 100);
        if (leastContrast(color, surfaces) >= contrast)
            return color;
    }
    return label;
}

} // namespace

double contrastRatio(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor laidOver(const QColor& below, const QColor& above) {
    const float share = above.alphaF();
    const auto channel = [share](float under, float over) {
        return std::clamp(under + (over - under) * share, 0.0F, 1.0F);
    };
    return QColor::fromRgbF(channel(below.redF(), above.redF()),
                            channel(below.greenF(), above.greenF()),
                            channel(below.blueF(), above.blueF()));
}

ThemeColors themeColors(const QPalette& palette) {
    ThemeColors colors;
    const QColor base = palette.color(QPalette::Base);
    const QColor window = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    colors.isDark = luminance(window) < luminance(text);
    const bool isDark = colors.isDark;

    // Desktops paint their windows greyer than their fields. The content stands between the two,
    // so that fields rise a little from it and the sidebar falls back a little.
    colors.field = base;
    colors.window = mixed(window, base, 0.55F);
    colors.sidebar = window;
    if (contrastRatio(colors.window, colors.sidebar) < 1.04)
        colors.sidebar = mixed(colors.window, text, 0.05F);
    colors.popover = isDark ? mixed(colors.window, Qt::white, 0.07F) : mixed(window, base, 0.85F);

    colors.card = translucent(text, isDark ? 0.06F : 0.045F);
    colors.quaternaryFill = translucent(text, isDark ? 0.09F : 0.07F);
    colors.glass = QColor::fromRgbF(1, 1, 1, isDark ? 0.10F : 0.8F);
    colors.separator = translucent(text, isDark ? 0.14F : 0.12F);
    colors.hover = translucent(text, isDark ? 0.07F : 0.05F);
    colors.pressed = translucent(text, isDark ? 0.13F : 0.11F);
    colors.scrim = QColor::fromRgbF(0, 0, 0, isDark ? 0.45F : 0.22F);

    // White on the highlight is what people know; a highlight on which neither the desktop's text
    // nor white can be read at all gets dark text.
    const QColor highlight = palette.color(QPalette::Highlight);
    colors.accentText = palette.color(QPalette::HighlightedText);
    if (contrastRatio(colors.accentText, highlight) < kSymbolContrast)
        colors.accentText =
            contrastRatio(Qt::white, highlight) >= kSymbolContrast ? Qt::white : Qt::black;
    const bool isTextLight = luminance(colors.accentText) > 0.18;
    colors.accent = adjusted(highlight, !isTextLight, [&](const QColor& candidate) {
        return contrastRatio(candidate, colors.accentText) >= kTextContrast;
    });
    colors.selection = translucent(colors.accent, kSelectionFill);

    // What text really stands on: the surfaces, boxes and chosen rows on them, buttons, and badges
    // inside of boxes. The inspector has the colour of the sidebar.
    const QColor box = laidOver(colors.window, colors.card);
    const QColor sideBox = laidOver(colors.sidebar, colors.card);
    const QColor chosen = laidOver(colors.window, colors.selection);
    const QColor button = laidOver(colors.popover, colors.glass);
    const Surfaces tinted{colors.window, colors.field, colors.popover, box, sideBox, chosen};
    Surfaces surfaces = tinted;
    surfaces.push_back(button);
    surfaces.push_back(colors.sidebar);
    surfaces.push_back(laidOver(colors.sidebar, colors.selection));
    surfaces.push_back(laidOver(colors.window, colors.quaternaryFill));
    for (const QColor& each : {box, sideBox})
        surfaces.push_back(laidOver(each, colors.quaternaryFill));

    colors.focus = adjusted(highlight, isDark, [&](const QColor& candidate) {
        return leastContrast(candidate, surfaces) >= kSymbolContrast;
    });
    colors.label = adjusted(text, isDark, [&](const QColor& candidate) {
        return leastContrast(candidate, surfaces) >= kTextContrast;
    });
    colors.secondaryLabel = fainter(colors.label, colors.window, 40, surfaces, kTextContrast);
    colors.tertiaryLabel = fainter(colors.label, colors.window, 56, surfaces, kTextContrast);
    colors.quaternaryLabel = mixed(colors.label, colors.window, 0.74F);

    colors.green = textTint(kGreen, isDark, tinted, button);
    colors.blue = textTint(kBlue, isDark, tinted, button);
    colors.orange = textTint(kOrange, isDark, tinted, button);
    colors.red = textTint(kRed, isDark, tinted, button);
    colors.teal = textTint(kTeal, isDark, tinted, button);
    const Surfaces plain{colors.window, colors.field, colors.popover};
    colors.vividGreen = symbolTint(kGreen, isDark, plain);
    colors.vividBlue = symbolTint(kBlue, isDark, plain);
    colors.vividOrange = symbolTint(kOrange, isDark, plain);
    colors.vividRed = symbolTint(kRed, isDark, plain);
    colors.yellow = symbolTint(kYellow, isDark, plain);
    return colors;
}

} // namespace zenlot
