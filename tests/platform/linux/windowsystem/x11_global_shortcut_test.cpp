#include "platform/linux/windowsystem/x11_display.h"
#include "platform/linux/windowsystem/x11_global_shortcut.h"
#include "platform/linux/windowsystem/xcb_memory.h"

#include <QGuiApplication>
#include <QProcess>
#include <QTest>
#include <QWindow>
#include <gtest/gtest.h>

#include <xcb/xcb.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kKeys = u"ctrl+alt+shift+p"_s;
constexpr xcb_keycode_t kKeyP = 33;
const QString kPlaceOfKeys = u"ctrl+alt+shift+33"_s;

void run(const QString& program, const QStringList& arguments) {
    ASSERT_EQ(QProcess::execute(program, arguments), 0);
}

void press(const QString& keys) {
    run(u"xdotool"_s, {u"key"_s, keys});
}

// Window managers let no window take the keyboard by itself.
void activate(quint64 window) {
    run(u"xdotool"_s, {u"windowactivate"_s, u"--sync"_s, QString::number(window)});
}

class X11GlobalShortcutTest : public testing::Test {
  protected:
    X11GlobalShortcutTest() {
        layout(u"us"_s);
        xcb_create_window(other, XCB_COPY_FROM_PARENT, window, root, 0, 0, 50, 50, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_map_window(other, window);
        xcb_flush(other);
        activate(window);
        EXPECT_TRUE(QTest::qWaitFor([this] { return focus() == window; }));
    }
    ~X11GlobalShortcutTest() override { xcb_disconnect(other); }

    static void layout(const QString& name) { run(u"setxkbmap"_s, {name}); }

    auto install() {
        return shortcut.install([this] { ++fired; });
    }

    bool waitForFired(int times) {
        return QTest::qWaitFor([&] { return fired >= times; }) && fired == times;
    }

    // Changes of the layout and of the active window reach us some time after they were made. Each
    // press has time to arrive, so that none is left for what is pressed next.
    bool firesSoon(const QString& keys = kKeys) {
        fired = 0;
        for (int presses = 0; presses < 40; ++presses) {
            press(keys);
            if (QTest::qWaitFor([this] { return fired > 0; }, 500))
                return fired == 1;
        }
        return false;
    }

    // By the answer everything is done that the other program asked before.
    xcb_window_t focus() const {
        const XcbPointer<xcb_get_input_focus_reply_t> reply(
            xcb_get_input_focus_reply(other, xcb_get_input_focus(other), nullptr));
        return reply->focus;
    }

    X11GlobalShortcut shortcut{*x11Connection()};
    int fired{0};
    // Another program, whose window has the keyboard.
    xcb_connection_t* other = xcb_connect(nullptr, nullptr);
    xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(other)).data->root;
    xcb_window_t window = xcb_generate_id(other);
};

TEST_F(X11GlobalShortcutTest, FiresInOtherProgramsWithExactlyItsModifiers) {
    auto monitor = install();
    press(u"Caps_Lock"_s);
    press(kKeys);
    press(u"Caps_Lock"_s);
    for (const char* keys : {"ctrl+alt+p", "alt+shift+p", "ctrl+shift+p", "p", "ctrl+alt+shift+o",
                             "super+ctrl+alt+shift+p", "ISO_Level3_Shift+ctrl+alt+shift+p"})
        press(QString::fromLatin1(keys));
    press(kKeys);
    EXPECT_TRUE(waitForFired(1));
    press(u"Num_Lock"_s);
    press(kKeys);
    press(u"Num_Lock"_s);
    EXPECT_TRUE(waitForFired(2));

    monitor = nullptr;
    press(kKeys);
    monitor = shortcut.install([&] { // the handler may end the monitor that calls it
        monitor.reset();
        ++fired;
    });
    press(kKeys);
    EXPECT_TRUE(waitForFired(3));
    press(kKeys);
    monitor = install();
    press(kKeys);
    EXPECT_TRUE(waitForFired(4));
}

TEST_F(X11GlobalShortcutTest, LeavesThePressToAWindowOfOurOwn) {
    struct Window : QWindow {
        void keyPressEvent(QKeyEvent* event) override { presses += event->key() == Qt::Key_P; }
        int presses{0};
    } own;
    const auto monitor = install();
    own.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&own));
    activate(own.winId());
    ASSERT_TRUE(QTest::qWaitForWindowActive(&own));
    press(kKeys);
    EXPECT_TRUE(QTest::qWaitFor([&] { return own.presses == 1; }));
    EXPECT_EQ(fired, 0);
    own.close(); // the other window has the keyboard again
    EXPECT_TRUE(firesSoon());
}

TEST_F(X11GlobalShortcutTest, FollowsLayoutsAndOtherGrabs) {
    xcb_grab_key(other, 0, root, XCB_MOD_MASK_ANY, kKeyP, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    focus();
    const auto monitor = install();
    ASSERT_TRUE(monitor);
    xcb_ungrab_key(other, kKeyP, root, XCB_MOD_MASK_ANY);
    focus();

    layout(u"dvorak"_s);
    EXPECT_TRUE(firesSoon());
    fired = 0;
    press(kPlaceOfKeys); // no longer P
    press(kKeys);
    EXPECT_TRUE(waitForFired(1));
    layout(u"ru"_s); // has no P
    EXPECT_TRUE(firesSoon(kPlaceOfKeys));
}

} // namespace
} // namespace zenlot
