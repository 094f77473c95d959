#include "platform/linux/windowsystem/x11_selection_watch.h"

#include "platform/linux/windowsystem/x11_display.h"

#include <QGuiApplication>

#include <xcb/xcb.h>

namespace zenlot {

X11SelectionWatch::X11SelectionWatch(const std::string& nameBeforeScreen)
    : connection_(x11Connection()) {
    if (connection_ == nullptr)
        return;
    selection_ = x11Atom(*connection_, nameBeforeScreen + std::to_string(x11ScreenNumber()));
    manager_ = x11Atom(*connection_, "MANAGER");
    qGuiApp->installNativeEventFilter(this);
    lookForOwner();
}

void X11SelectionWatch::lookForOwner() {
    // The next owner may well get the window of the last one's number.
    owner_ = x11SelectionOwner(*connection_, selection_);
    if (owner_ != XCB_WINDOW_NONE) {
        // The toolkit, which shares the connection, asks for no more where it uses the same.
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        xcb_change_window_attributes(connection_, owner_, XCB_CW_EVENT_MASK, &mask);
        xcb_flush(connection_);
    }
    Q_EMIT ownerChanged();
}

// A new owner announces itself to the root window, which the toolkit listens to as well.
bool X11SelectionWatch::nativeEventFilter(const QByteArray& type, void* message,
                                          qintptr* /*result*/) {
    if (type != "xcb_generic_event_t")
        return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    const unsigned eventType = event->response_type & 0x7fU; // without the mark of sent events
    if (eventType == XCB_CLIENT_MESSAGE) {
        const auto* announcement = reinterpret_cast<const xcb_client_message_event_t*>(event);
        if (announcement->type == manager_ && announcement->data.data32[1] == selection_)
            lookForOwner();
    } else if (owner_ == XCB_WINDOW_NONE) {
        return false;
    } else if (eventType == XCB_PROPERTY_NOTIFY) {
        const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event);
        if (change->window == owner_)
            Q_EMIT propertyChanged(change->atom);
    } else if (eventType == XCB_DESTROY_NOTIFY) {
        const auto* end = reinterpret_cast<const xcb_destroy_notify_event_t*>(event);
        if (end->window == owner_)
            lookForOwner();
    }
    return false;
}

} // namespace zenlot
