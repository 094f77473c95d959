#include "platform/linux/statusarea/xembed_tray_watch.h"

#include "platform/linux/windowsystem/x11_display.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

#include <string>
#include <utility>

namespace zenlot {
XEmbedTrayWatch::XEmbedTrayWatch() {
    const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    // A toolkit that draws nowhere has the interface too.
    if (x11 == nullptr || x11->connection() == nullptr)
        return;
    connection_ = x11->connection();
    selection_ = x11Atom(*connection_, "_NET_SYSTEM_TRAY_S" + std::to_string(x11ScreenNumber()));
    manager_ = x11Atom(*connection_, "MANAGER");
    qGuiApp->installNativeEventFilter(this);
    lookForOwner();
}

void XEmbedTrayWatch::lookForOwner() {
    const std::uint32_t owner = x11SelectionOwner(*connection_, selection_);
    if (owner == std::exchange(owner_, owner))
        return;
    if (owner != XCB_WINDOW_NONE) {
        // The toolkit asks for the same when it uses the tray.
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_, owner, XCB_CW_EVENT_MASK, &mask);
        xcb_flush(connection_);
    }
    Q_EMIT changed();
}

// A new tray announces itself to the root window, which the toolkit listens to as well.
bool XEmbedTrayWatch::nativeEventFilter(const QByteArray& type, void* message,
                                        qintptr* /*result*/) {
    if (type != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const unsigned eventType = event->response_type & 0x7fU; // without the mark of sent events
    if (eventType == XCB_CLIENT_MESSAGE) {
        const auto* announcement = reinterpret_cast<const xcb_client_message_event_t*>(event);
        if (announcement->type == manager_ && announcement->data.data32[1] == selection_)
            lookForOwner();
    } else if (eventType == XCB_DESTROY_NOTIFY) {
        const auto* end = reinterpret_cast<const xcb_destroy_notify_event_t*>(event);
        if (owner_ != XCB_WINDOW_NONE && end->window == owner_)
            lookForOwner();
    }
    return false;
}

} // namespace zenlot
