#include "platform/linux/windowsystem/x11_settings_appearance.h"

#include "platform/linux/windowsystem/x11_display.h"
#include "platform/linux/windowsystem/xcb_memory.h"

#include <QString>
#include <QtEndian>

#include <xcb/xcb.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// In units of four bytes; a few hundred bytes are usual.
constexpr std::uint32_t kLongestProperty = 16384;
// In the unit that it is written in. What is told beside it of a display of many small dots is
// not in it.
constexpr double kUsualDpi = 96 * 1024;

enum class Kind : std::uint8_t { number = 0, text = 1, color = 2 };

// Takes one value after the other from the front of a property, in its byte order; after the
// first that is not there, none.
class Reader {
  public:
    Reader(std::string_view bytes, bool isBigEndian) : rest_(bytes), isBigEndian_(isBigEndian) {}

    std::string_view take(std::size_t length) {
        isComplete_ = isComplete_ && length <= rest_.size();
        const std::string_view taken = isComplete_ ? rest_.substr(0, length) : std::string_view();
        rest_.remove_prefix(taken.size());
        return taken;
    }
    // Padded to a multiple of four.
    std::string_view takeText(std::size_t length) {
        const std::string_view text = take(length);
        take((4 - length % 4) % 4);
        return text;
    }
    template <typename Number>
    Number takeNumber() {
        const std::string_view bytes = take(sizeof(Number));
        if (bytes.empty())
            return 0;
        return isBigEndian_ ? qFromBigEndian<Number>(bytes.data())
                            : qFromLittleEndian<Number>(bytes.data());
    }
    bool isComplete() const { return isComplete_; }

  private:
    std::string_view rest_;
    bool isBigEndian_;
    bool isComplete_{true};
};

void takeText(AppearanceWishes& wishes, std::string_view name, std::string_view value) {
    const QString text = QString::fromUtf8(value.data(), static_cast<qsizetype>(value.size()));
    if (name == "Net/ThemeName") {
        wishes.isContrastHigh = text.startsWith("HighContrast"_L1);
        // That themes are dark is told by their names alone.
        if (text.endsWith("dark"_L1, Qt::CaseInsensitive) ||
            text.endsWith("inverse"_L1, Qt::CaseInsensitive))
            wishes.colorScheme = ColorScheme::dark;
    } else if (name == "Gtk/FontName") { // "Sans 10"
        const double points = text.section(u' ', -1).toDouble();
        wishes.textScale = std::min(std::max(1.0, points / kUsualTextPoints), kLargestTextScale);
    }
}

} // namespace

AppearanceWishes wishesInX11Settings(std::string_view property) {
    AppearanceWishes wishes;
    Reader reader(property, property.starts_with('\1'));
    reader.take(8); // the byte order, and how often they have changed
    const auto count = reader.takeNumber<std::uint32_t>();
    for (std::uint32_t index = 0; index < count && reader.isComplete(); ++index) {
        const auto kind = static_cast<Kind>(reader.takeNumber<std::uint8_t>());
        reader.take(1);
        const std::string_view name = reader.takeText(reader.takeNumber<std::uint16_t>());
        reader.take(4); // when it was changed
        if (kind == Kind::text) {
            const std::string_view value = reader.takeText(reader.takeNumber<std::uint32_t>());
            if (reader.isComplete())
                takeText(wishes, name, value);
        } else if (kind == Kind::number) {
            const auto value = reader.takeNumber<std::uint32_t>();
            if (!reader.isComplete())
                break;
            if (name == "Gtk/EnableAnimations")
                wishes.isMotionReduced = value == 0;
            else if (name == "Gdk/UnscaledDPI")
                wishes.toolkitTextScale = std::clamp(value / kUsualDpi, 1.0, kLargestTextScale);
        } else if (kind == Kind::color) {
            reader.take(8);
        } else {
            break;
        }
    }
    return wishes;
}

X11SettingsAppearance::X11SettingsAppearance() {
    if (xcb_connection_t* const connection = x11Connection())
        property_ = x11Atom(*connection, "_XSETTINGS_SETTINGS");
    connect(&owner_, &X11SelectionWatch::ownerChanged, this, &X11SettingsAppearance::read);
    connect(&owner_, &X11SelectionWatch::propertyChanged, this, [this](std::uint32_t property) {
        if (property == property_)
            read();
    });
    read();
}

void X11SettingsAppearance::read() {
    std::string_view property;
    XcbPointer<xcb_get_property_reply_t> reply;
    if (owner_.owner() != XCB_WINDOW_NONE) {
        xcb_connection_t* const connection = x11Connection();
        reply.reset(
            xcb_get_property_reply(connection,
                                   xcb_get_property(connection, 0, owner_.owner(), property_,
                                                    property_, 0, kLongestProperty),
                                   nullptr));
        if (reply)
            property = {static_cast<const char*>(xcb_get_property_value(reply.get())),
                        static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
    }
    const AppearanceWishes wishes = wishesInX11Settings(property);
    if (std::exchange(wishes_, wishes) != wishes)
        Q_EMIT changed();
}

} // namespace zenlot
