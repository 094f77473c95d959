// What window managers on X11 are asked and told beyond what the toolkit does.
//
// The numbers of windows are QWindow::winId(). Nothing here fails: a window manager that does not
// know a request ignores it.
#pragma once

#include <cstdint>

struct xcb_connection_t;

namespace zenlot {

class X11Windows final {
  public:
    // The toolkit's connection to the display, which outlives the object.
    explicit X11Windows(xcb_connection_t& connection);

    // Whether taskbar and pager leave the window out. A window that is not mapped takes it along
    // to its next mapping; the window manager forgets it when the window is closed.
    void setSkipsTaskbar(std::uint32_t window, bool isMapped, bool skips) const;

    // Gives the keyboard to the window at the user's wish, from wherever that came: unlike a
    // program's own wish it is not weighed against what the user did last.
    void activate(std::uint32_t window) const;

    // Whether what is translucent in a window shows what lies below. Asks the server.
    bool hasCompositor() const;

  private:
    void sendToWindowManager(std::uint32_t window, std::uint32_t type,
                             const std::uint32_t (&data)[5]) const;

    xcb_connection_t& connection_;
    std::uint32_t root_;
    std::uint32_t netWmState_;
    std::uint32_t skipTaskbar_;
    std::uint32_t skipPager_;
    std::uint32_t activeWindow_;
    std::uint32_t compositor_;
};

} // namespace zenlot
