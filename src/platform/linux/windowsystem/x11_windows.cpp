#include "platform/linux/windowsystem/x11_windows.h"

#include "platform/linux/windowsystem/x11_display.h"
#include "platform/linux/windowsystem/xcb_memory.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <span>
#include <string>
#include <vector>

namespace zenlot {
namespace {

// From the Extended Window Manager Hints.
constexpr std::uint32_t kRemove = 0;
constexpr std::uint32_t kAdd = 1;
constexpr std::uint32_t kFromApplication = 1;
constexpr std::uint32_t kFromUser = 2;

constexpr std::uint32_t kMostStates = 64;

} // namespace

X11Windows::X11Windows(xcb_connection_t& connection)
    : connection_(connection), root_(x11RootWindow(connection)),
      netWmState_(x11Atom(connection, "_NET_WM_STATE")),
      skipTaskbar_(x11Atom(connection, "_NET_WM_STATE_SKIP_TASKBAR")),
      skipPager_(x11Atom(connection, "_NET_WM_STATE_SKIP_PAGER")),
      activeWindow_(x11Atom(connection, "_NET_ACTIVE_WINDOW")),
      compositor_(x11Atom(connection, "_NET_WM_CM_S" + std::to_string(x11ScreenNumber()))) {}

void X11Windows::setSkipsTaskbar(std::uint32_t window, bool isMapped, bool skips) const {
    if (isMapped) {
        sendToWindowManager(
            window, netWmState_,
            {skips ? kAdd : kRemove, skipTaskbar_, skipPager_, kFromApplication, 0});
        return;
    }
    const XcbPointer<xcb_get_property_reply_t> property(xcb_get_property_reply(
        &connection_,
        xcb_get_property(&connection_, 0, window, netWmState_, XCB_ATOM_ATOM, 0, kMostStates),
        nullptr));
    std::vector<std::uint32_t> states;
    if (property && property->format == 32) {
        const std::span present(
            static_cast<const std::uint32_t*>(xcb_get_property_value(property.get())),
            property->value_len);
        std::ranges::copy_if(present, std::back_inserter(states), [this](std::uint32_t state) {
            return state != skipTaskbar_ && state != skipPager_;
        });
    }
    if (skips)
        states.insert(states.end(), {skipTaskbar_, skipPager_});
    xcb_change_property(&connection_, XCB_PROP_MODE_REPLACE, window, netWmState_, XCB_ATOM_ATOM, 32,
                        static_cast<std::uint32_t>(states.size()), states.data());
}

void X11Windows::activate(std::uint32_t window) const {
    sendToWindowManager(window, activeWindow_, {kFromUser, XCB_CURRENT_TIME, 0, 0, 0});
}

void X11Windows::sendToWindowManager(std::uint32_t window, std::uint32_t type,
                                     const std::uint32_t (&data)[5]) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::ranges::copy(data, message.data.data32);
    xcb_send_event(&connection_, 0, root_,
                   XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(&connection_);
}

bool X11Windows::hasCompositor() const {
    return x11SelectionOwner(connection_, compositor_) != XCB_WINDOW_NONE;
}

} // namespace zenlot
