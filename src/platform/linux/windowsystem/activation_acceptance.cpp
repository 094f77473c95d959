#include "platform/linux/windowsystem/activation_acceptance.h"

#include "platform/linux/windowsystem/x11_display.h"

#include <xcb/xcb.h>

#include <algorithm>

namespace zenlot {

namespace {

// A text to whoever follows starts on this display (the Startup Notification Protocol): in pieces
// of twenty bytes, the last of them ended by a zero, under the name of a window of one's own.
void broadcastStartupMessage(xcb_connection_t& display, const QByteArray& text) {
    xcb_connection_t* connection = &display;
    const xcb_window_t root = x11RootWindow(display);
    const xcb_window_t sender = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, sender, root, -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 8;
    message.window = sender;
    message.type = x11Atom(display, "_NET_STARTUP_INFO_BEGIN");
    const xcb_atom_t continuation = x11Atom(display, "_NET_STARTUP_INFO");
    constexpr qsizetype kPiece = sizeof message.data.data8;
    for (qsizetype start = 0; start <= text.size(); start += kPiece) {
        const QByteArray piece = text.mid(start, kPiece).leftJustified(kPiece, '\0');
        std::ranges::copy(piece, message.data.data8);
        xcb_send_event(connection, 0, root, XCB_EVENT_MASK_PROPERTY_CHANGE,
                       reinterpret_cast<const char*>(&message));
        message.type = continuation;
    }
    xcb_destroy_window(connection, sender);
    xcb_flush(connection);
}

} // namespace

void acceptActivation(const Activation& activation) {
    if (!activation.token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", activation.token.toUtf8());
    xcb_connection_t* const connection = x11Connection();
    if (connection == nullptr || activation.startupId.isEmpty())
        return;
    QByteArray identifier = activation.startupId.toUtf8();
    identifier.replace('\\', "\\\\").replace('"', "\\\"");
    broadcastStartupMessage(*connection, "remove: ID=\"" + identifier + '"');
}

} // namespace zenlot
