// The global shortcut as a passive grab of the key on X11, which is also how it works for programs
// under XWayland.
//
// The key is the one that gives P in the layouts of the moment, or the place where P is on most
// keyboards when none does; a change of the layout is followed. While another program holds the
// combination the monitor is silent and tries again every 10 s.
//
//     if (auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>())
//         shortcut = std::make_unique<X11GlobalShortcut>(*x11->connection());
//
// The grab is the toolkit's own, so that a press counts as a reason to take the keyboard: window
// managers compare its time with what the user did last.
#pragma once

#include "platform/global_shortcut.h"

struct xcb_connection_t;

namespace zenlot {

class X11GlobalShortcut final : public GlobalShortcut {
  public:
    // The toolkit's connection to the display.
    explicit X11GlobalShortcut(xcb_connection_t& connection) : connection_(connection) {}

    std::unique_ptr<Monitor> install(Handler handler) override;

  private:
    xcb_connection_t& connection_;
};

} // namespace zenlot
