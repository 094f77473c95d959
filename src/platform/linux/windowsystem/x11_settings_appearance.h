// What the settings of an X11 display tell of how the user wants programs to look: the name of the
// theme, the font, whether things move. Desktops that keep them nowhere else have these.
//
//     X11SettingsAppearance appearance(connection);
//
// Nothing is wished for while nobody sets anything, and without a display. Main thread only.
#pragma once

#include "platform/appearance.h"

#include <QAbstractNativeEventFilter>

#include <cstdint>
#include <string_view>

struct xcb_connection_t;

namespace zenlot {

class X11SettingsAppearance final : public Appearance, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    // The toolkit's connection, which outlives the object; none where there is no X11. Asks the
    // server.
    explicit X11SettingsAppearance(xcb_connection_t* connection, QObject* parent = nullptr);

    const AppearanceWishes& wishes() const override { return wishes_; }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

  private:
    void lookForOwner();
    void read();

    xcb_connection_t* connection_;
    std::uint32_t selection_{0};
    std::uint32_t settings_{0};
    std::uint32_t manager_{0};
    std::uint32_t owner_{0}; // the window that has the settings
    AppearanceWishes wishes_;
};

// What such settings say, as they are written in the property of that window. Whatever ends too
// soon or is of another form counts for nothing.
AppearanceWishes wishesInX11Settings(std::string_view property);

} // namespace zenlot
