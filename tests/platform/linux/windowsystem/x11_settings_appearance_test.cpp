#include "platform/fake_appearance.h"
#include "platform/linux/windowsystem/x11_display.h"
#include "platform/linux/windowsystem/x11_settings_appearance.h"
#include "platform/merged_appearance.h"

#include <QTest>
#include <QtEndian>
#include <gtest/gtest.h>

#include <xcb/xcb.h>

namespace zenlot {
namespace {

using namespace std::string_literals;

// The settings as their owner writes them, in the byte order of its machine.
class Settings {
  public:
    explicit Settings(bool isBigEndian = false) : isBigEndian_(isBigEndian) {}

    Settings& add(const std::string& name, const std::string& text) {
        addHead('\1', name);
        addNumber<quint32>(static_cast<quint32>(text.size()));
        addText(text);
        return *this;
    }
    Settings& add(const std::string& name, quint32 number) {
        addHead('\0', name);
        addNumber(number);
        return *this;
    }
    Settings& addColor(const std::string& name) {
        addHead('\2', name);
        body_ += std::string(8, '\x20');
        return *this;
    }
    std::string bytes() {
        const std::string body = std::exchange(body_, {});
        body_ = isBigEndian_ ? "\1\0\0\0"s : "\0\0\0\0"s;
        addNumber<quint32>(7);
        addNumber(count_);
        return body_ + body;
    }

  private:
    void addHead(char kind, const std::string& name) {
        body_ += {kind, '\0'};
        addNumber(static_cast<quint16>(name.size()));
        addText(name);
        addNumber<quint32>(0);
        ++count_;
    }
    template <typename Number>
    void addNumber(Number number) {
        const Number ordered = isBigEndian_ ? qToBigEndian(number) : qToLittleEndian(number);
        body_.append(reinterpret_cast<const char*>(&ordered), sizeof ordered);
    }
    void addText(const std::string& text) {
        body_ += text + std::string((4 - text.size() % 4) % 4, '\0');
    }

    bool isBigEndian_;
    quint32 count_{0};
    std::string body_;
};

std::string ofXfce(bool isBigEndian) {
    return Settings(isBigEndian)
        .add("Gtk/CursorThemeSize", 24)
        .addColor("Net/AccentColor")
        .add("Gtk/FontName", "Noto Sans 16.5")
        .add("Gtk/EnableAnimations", 0U)
        .add("Net/ThemeName", "Greybird-dark")
        .bytes();
}

TEST(X11SettingsAppearanceTest, ReadsWhatTheDesktopSet) {
    const AppearanceWishes dark{
        .colorScheme = ColorScheme::dark, .textScale = 1.5, .isMotionReduced = true};
    const std::vector<std::pair<std::string, AppearanceWishes>> cases{
        {ofXfce(false), dark},
        {ofXfce(true), dark},
        {Settings().add("Net/ThemeName", "Adwaita").add("Gtk/FontName", "Sans 10").bytes(), {}},
        {Settings().add("Net/ThemeName", "HighContrastInverse").bytes(),
         {.colorScheme = ColorScheme::dark, .isContrastHigh = true}},
        {Settings().add("Gdk/UnscaledDPI", 96 * 1024 * 3 / 2).bytes(), {.toolkitTextScale = 1.5}},
        {Settings().add("Gtk/FontName", "Sans 400").bytes(), {.textScale = 3}},
        {Settings().add("Gtk/FontName", "Sans").bytes(), {}},
        {Settings().add("Gtk/FontName", "Sans nan").bytes(), {}},
    };
    for (const auto& [property, wishes] : cases)
        EXPECT_EQ(wishesInX11Settings(property), wishes) << testing::PrintToString(property);
}

TEST(X11SettingsAppearanceTest, TakesNothingFromWhatEndsTooSoonOrLies) {
    const std::string whole = ofXfce(false);
    for (std::size_t length = 0; length < whole.size() - 3; ++length) // the last three are padding
        EXPECT_EQ(wishesInX11Settings(whole.substr(0, length)).colorScheme,
                  ColorScheme::noPreference)
            << length;
    std::string manyPromised = whole;
    manyPromised.replace(8, 4, "\xff\xff\xff\xff");
    EXPECT_EQ(wishesInX11Settings(manyPromised), wishesInX11Settings(whole));
}

// The manager of the settings is another program.
class SettingsManager {
  public:
    SettingsManager() {
        xcb_create_window(connection_, 0, window_, root_, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    }
    SettingsManager(const SettingsManager&) = delete;
    SettingsManager& operator=(const SettingsManager&) = delete;
    ~SettingsManager() { xcb_disconnect(connection_); }

    void set(const std::string& property) {
        const auto settings = x11Atom(*connection_, "_XSETTINGS_SETTINGS");
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, settings, settings, 8,
                            static_cast<std::uint32_t>(property.size()), property.data());
        xcb_flush(connection_);
    }
    void announce() {
        const auto selection = x11Atom(*connection_, "_XSETTINGS_S0");
        xcb_set_selection_owner(connection_, window_, selection, XCB_CURRENT_TIME);
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = root_;
        event.type = x11Atom(*connection_, "MANAGER");
        event.data.data32[1] = selection;
        event.data.data32[2] = window_;
        xcb_send_event(connection_, 0, root_, XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&event));
        xcb_flush(connection_);
    }

  private:
    xcb_connection_t* connection_{xcb_connect(nullptr, nullptr)};
    std::uint32_t root_{x11RootWindow(*connection_)};
    std::uint32_t window_{xcb_generate_id(connection_)};
};

TEST(X11SettingsAppearanceTest, FollowsThemWhoeverHasThem) {
    const X11SettingsAppearance appearance;
    const FakeAppearance none;
    const MergedAppearance merged(none, appearance);
    const auto comesTo = [&](ColorScheme scheme) {
        return QTest::qWaitFor([&] { return merged.wishes().colorScheme == scheme; }, 20'000);
    };
    ASSERT_TRUE(comesTo(ColorScheme::noPreference));
    for (int round = 0; round < 2; ++round) { // the desktop's daemon may crash and come back
        SettingsManager manager;
        manager.set(ofXfce(false));
        manager.announce();
        EXPECT_TRUE(comesTo(ColorScheme::dark)) << round;
        manager.set(Settings().add("Net/ThemeName", "Greybird").bytes());
        EXPECT_TRUE(comesTo(ColorScheme::noPreference)) << round;
        manager.set(ofXfce(false));
        EXPECT_TRUE(comesTo(ColorScheme::dark)) << round;
    }
    EXPECT_TRUE(comesTo(ColorScheme::noPreference));
}

} // namespace
} // namespace zenlot
