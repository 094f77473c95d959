// Follows who owns a selection of an X11 display. Programs that serve a whole screen, such as a
// tray or the keeper of the settings, own one with the screen's number at the end of its name.
//
//     X11SelectionWatch tray("_NET_SYSTEM_TRAY_S");
//     connect(&tray, &X11SelectionWatch::ownerChanged, this, [&] { use(tray.owner()); });
//
// Nobody owns anything where there is no X11. Main thread only.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>
#include <string>

struct xcb_connection_t;

namespace zenlot {

class X11SelectionWatch final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    // Needs the QGuiApplication. Asks the server.
    explicit X11SelectionWatch(const std::string& nameBeforeScreen);

    // A window; 0 for none.
    std::uint32_t owner() const { return owner_; }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

  Q_SIGNALS:
    // It may have the number of the one before.
    void ownerChanged();
    // A property of the owner's window, by its atom.
    void propertyChanged(std::uint32_t property);

  private:
    void lookForOwner();

    xcb_connection_t* connection_;
    std::uint32_t selection_{0};
    std::uint32_t manager_{0};
    std::uint32_t owner_{0};
};

} // namespace zenlot
