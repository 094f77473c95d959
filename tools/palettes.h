// The colours of the two desktops in whose look pictures are drawn.
#pragma once

#include <QPalette>

namespace zenlot {

inline QPalette paletteOf(const QColor& window, const QColor& base, const QColor& text) {
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Text, text);
    return palette;
}

inline QPalette lightPalette() {
    return paletteOf(QColor(0xef, 0xef, 0xef), Qt::white, QColor(0x1c, 0x1c, 0x1e));
}

inline QPalette darkPalette() {
    return paletteOf(QColor(0x2a, 0x2a, 0x2d), QColor(0x1b, 0x1b, 0x1d), QColor(0xf2, 0xf2, 0xf4));
}

} // namespace zenlot
