// Which keys and modifier bits stand for what, in the layouts that an X server has loaded now.
#pragma once

#include <xcb/xproto.h>

#include <cstdint>
#include <vector>

namespace zenlot {

class X11Keyboard {
  public:
    // Asks the server, and knows no key when it does not answer.
    explicit X11Keyboard(xcb_connection_t& connection);

    std::vector<xcb_keycode_t> keysFor(xcb_keysym_t symbol) const;

    // The modifier bits that keys with this symbol set.
    std::uint16_t modifiersFor(xcb_keysym_t symbol) const;

  private:
    xcb_keycode_t firstKey_;
    std::size_t symbolsPerKey_{0};
    std::vector<xcb_keysym_t> symbols_; // of one key after the other
    std::size_t keysPerModifier_{0};
    std::vector<xcb_keycode_t> modifierKeys_; // of one modifier bit after the other
};

} // namespace zenlot
