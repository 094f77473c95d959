// Names and numbers of the display that the program is on.
#pragma once

#include <cstdint>
#include <string>

struct xcb_connection_t;

namespace zenlot {

// The toolkit's connection; none where the program is not on X11. Needs the QGuiApplication.
xcb_connection_t* x11Connection();

// The number of the screen that DISPLAY names; some atoms end in it.
int x11ScreenNumber();

// The root window of that screen.
std::uint32_t x11RootWindow(xcb_connection_t& connection);

// Asks the server. 0 when it does not answer.
std::uint32_t x11Atom(xcb_connection_t& connection, const std::string& name);

// The window that owns the selection, or 0. Asks the server.
std::uint32_t x11SelectionOwner(xcb_connection_t& connection, std::uint32_t selection);

} // namespace zenlot
