// The colours of the program, derived from the desktop's palette.
//
// Text and tints come out with a contrast (as WCAG defines it) of at least 4.5 to 1 against every
// surface that they are meant for, symbols, the focus ring and the mark of a selected row 3 to 1,
// whatever the palette; a palette that is itself readable keeps its own text and highlight colours.
//
//     const ThemeColors colors = themeColors(QGuiApplication::palette());
#pragma once

#include <QColor>
#include <QPalette>

namespace zenlot {

struct ThemeColors {
    bool isDark = false; // the palette's text is lighter than its window

    // Text, from the plainest to the faintest. The last one is for prompts and ornaments only.
    QColor label;
    QColor secondaryLabel;
    QColor tertiaryLabel;
    QColor quaternaryLabel;

    QColor accent;     // fills what is chosen or the default
    QColor accentText; // text on accent
    QColor focus;      // the ring around what has the keyboard

    // Surfaces, opaque.
    QColor window;
    QColor sidebar;
    QColor field;
    QColor popover; // menus, dialogs and tool tips

    // Laid over a surface, translucent.
    QColor card;
    QColor quaternaryFill;
    QColor glass; // buttons
    QColor separator;
    QColor hover;
    QColor pressed;
    QColor selection; // behind the row that is chosen
    QColor scrim;     // over a window that a dialog blocks

    // Readable as text on their own tenth.
    QColor green;
    QColor blue;
    QColor orange;
    QColor red;
    QColor teal;

    // The same hues for symbols, which need less contrast than text.
    QColor vividGreen;
    QColor vividBlue;
    QColor vividOrange;
    QColor vividRed;
    QColor yellow;
};

ThemeColors themeColors(const QPalette& palette);

// From 1 (the same brightness) to 21 (black and white). Both colours are taken as opaque.
double contrastRatio(const QColor& one, const QColor& other);

// The colour seen where a translucent one lies over an opaque one.
QColor laidOver(const QColor& below, const QColor& above);

} // namespace zenlot
