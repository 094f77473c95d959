#include "platform/linux/windowsystem/x11_keyboard.h"

#include "platform/linux/windowsystem/xcb_memory.h"

#include <algorithm>
#include <iterator>

namespace zenlot {

X11Keyboard::X11Keyboard(xcb_connection_t& connection)
    : firstKey_(xcb_get_setup(&connection)->min_keycode) {
    const int keyCount = xcb_get_setup(&connection)->max_keycode - firstKey_ + 1;
    const auto mapping =
        xcb_get_keyboard_mapping(&connection, firstKey_, static_cast<std::uint8_t>(keyCount));
    const auto modifiers = xcb_get_modifier_mapping(&connection);
    const XcbPointer<xcb_get_keyboard_mapping_reply_t> symbols(
        xcb_get_keyboard_mapping_reply(&connection, mapping, nullptr));
    const XcbPointer<xcb_get_modifier_mapping_reply_t> keys(
        xcb_get_modifier_mapping_reply(&connection, modifiers, nullptr));
    if (!symbols || !keys)
        return;
    symbolsPerKey_ = symbols->keysyms_per_keycode;
    std::copy_n(xcb_get_keyboard_mapping_keysyms(symbols.get()),
                xcb_get_keyboard_mapping_keysyms_length(symbols.get()),
                std::back_inserter(symbols_));
    keysPerModifier_ = keys->keycodes_per_modifier;
    std::copy_n(xcb_get_modifier_mapping_keycodes(keys.get()),
                xcb_get_modifier_mapping_keycodes_length(keys.get()),
                std::back_inserter(modifierKeys_));
}

std::vector<xcb_keycode_t> X11Keyboard::keysFor(xcb_keysym_t symbol) const {
    std::vector<xcb_keycode_t> keys;
    for (std::size_t index = 0; index < symbols_.size(); ++index) {
        const auto key = static_cast<xcb_keycode_t>(firstKey_ + index / symbolsPerKey_);
        if (symbols_[index] == symbol && (keys.empty() || keys.back() != key))
            keys.push_back(key);
    }
    return keys;
}

std::uint16_t X11Keyboard::modifiersFor(xcb_keysym_t symbol) const {
    const std::vector<xcb_keycode_t> keys = keysFor(symbol);
    unsigned bits = 0;
    for (std::size_t index = 0; index < modifierKeys_.size(); ++index) {
        if (std::ranges::find(keys, modifierKeys_[index]) != keys.end())
            bits |= 1U << (index / keysPerModifier_);
    }
    return static_cast<std::uint16_t>(bits);
}

} // namespace zenlot
