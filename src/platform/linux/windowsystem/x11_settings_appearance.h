// What the settings of an X11 display tell of how the user wants programs to look: the name of the
// theme, the font, whether things move. Desktops that keep them nowhere else have these.
//
//     X11SettingsAppearance appearance;
//
// Nothing is wished for while nobody sets anything, and without a display. Main thread only.
#pragma once

#include "platform/appearance.h"
#include "platform/linux/windowsystem/x11_selection_watch.h"

#include <string_view>

namespace zenlot {

class X11SettingsAppearance final : public Appearance {
    Q_OBJECT

  public:
    // Needs the QGuiApplication. Asks the server.
    X11SettingsAppearance();

    const AppearanceWishes& wishes() const override { return wishes_; }

  private:
    void read();

    X11SelectionWatch owner_{"_XSETTINGS_S"};
    std::uint32_t property_{0};
    AppearanceWishes wishes_;
};

// What such settings say, as they are written in the property of that window. Whatever ends too
// soon or is of another form counts for nothing.
AppearanceWishes wishesInX11Settings(std::string_view property);

} // namespace zenlot
