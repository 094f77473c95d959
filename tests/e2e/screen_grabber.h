// What a part of an X11 screen looks like.
#pragma once

#include <QByteArray>
#include <QRect>
#include <QString>

#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>

namespace zenlot {

class ScreenGrabber {
  public:
    explicit ScreenGrabber(const QString& display)
        : connection_(xcb_connect(display.toLocal8Bit().constData(), nullptr), &xcb_disconnect) {}

    // The pixels as the server has them; empty when there are none.
    QByteArray grab(const QRect& area) const {
        if (xcb_connection_has_error(connection_.get()) != 0)
            return {};
        const xcb_window_t root =
            xcb_setup_roots_iterator(xcb_get_setup(connection_.get())).data->root;
        const auto request = xcb_get_image(
            connection_.get(), XCB_IMAGE_FORMAT_Z_PIXMAP, root, static_cast<int16_t>(area.x()),
            static_cast<int16_t>(area.y()), static_cast<uint16_t>(area.width()),
            static_cast<uint16_t>(area.height()), ~0U);
        const std::unique_ptr<xcb_get_image_reply_t, decltype(&std::free)> image(
            xcb_get_image_reply(connection_.get(), request, nullptr), &std::free);
        if (!image)
            return {};
        return {reinterpret_cast<const char*>(xcb_get_image_data(image.get())),
                xcb_get_image_data_length(image.get())};
    }

  private:
    std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection_;
};

} // namespace zenlot
