#include "platform/linux/windowsystem/x11_display.h"

#include "platform/linux/windowsystem/xcb_memory.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

namespace zenlot {

xcb_connection_t* x11Connection() {
    // A toolkit that draws nowhere has the interface too, without a connection.
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 == nullptr ? nullptr : x11->connection();
}

int x11ScreenNumber() {
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    xcb_parse_display(nullptr, &host, &display, &screen);
    std::free(host);
    return screen;
}

std::uint32_t x11RootWindow(xcb_connection_t& connection) {
    auto screen = xcb_setup_roots_iterator(xcb_get_setup(&connection));
    for (int number = x11ScreenNumber(); number > 0 && screen.rem > 1; --number)
        xcb_screen_next(&screen);
    return screen.data->root;
}

std::uint32_t x11Atom(xcb_connection_t& connection, const std::string& name) {
    const auto request =
        xcb_intern_atom(&connection, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const XcbPointer<xcb_intern_atom_reply_t> reply(
        xcb_intern_atom_reply(&connection, request, nullptr));
    return reply ? reply->atom : 0;
}

std::uint32_t x11SelectionOwner(xcb_connection_t& connection, std::uint32_t selection) {
    const auto request = xcb_get_selection_owner(&connection, selection);
    const XcbPointer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(&connection, request, nullptr));
    return reply ? reply->owner : 0;
}

} // namespace zenlot
