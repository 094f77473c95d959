// Whether the display has a tray of the older kind, which takes in the windows of its icons. There
// is none but on X11.
#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>

#include <cstdint>

struct xcb_connection_t;

namespace zenlot {

class XEmbedTrayWatch final : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    // Needs the QGuiApplication. Asks the server.
    XEmbedTrayWatch();

    bool isPresent() const { return owner_ != 0; }

    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;

  Q_SIGNALS:
    void changed();

  private:
    void lookForOwner();

    xcb_connection_t* connection_{nullptr};
    std::uint32_t selection_{0};
    std::uint32_t manager_{0};
    std::uint32_t owner_{0}; // the tray's window
};

} // namespace zenlot
