// Has the whole program look as the user wants it. The palette and the font of the application are
// what everything is drawn by, so it is enough to change these; whatever the desktop has given them
// at the start comes back when nothing else is wished for.
//
//     const AppearanceFollower follower(appearance);
//
// Main thread only.
#pragma once

#include "platform/appearance.h"

#include <QFont>
#include <QObject>
#include <QPalette>

namespace zenlot {

class AppearanceFollower final : public QObject {
    Q_OBJECT

  public:
    // Needs a QGuiApplication. `appearance` must outlive the object.
    explicit AppearanceFollower(const Appearance& appearance);

  private:
    void follow();

    const Appearance& appearance_;
    QPalette desktopsPalette_;
    QFont desktopsFont_;
    bool isPaletteOurs_{false};
    bool isTextSizeTold_{false};
};

// The desktop's palette where it is as wished for, else one of ours, with the accent in it.
QPalette wishedPalette(const QPalette& desktops, const AppearanceWishes& wishes);

// The desktop's font in the size that is wished for.
QFont wishedFont(const QFont& desktops, const AppearanceWishes& wishes);

} // namespace zenlot
