#include "platform/linux/windowsystem/desktop_application_windows.h"
#include "platform/linux/windowsystem/x11_display.h"
#include "platform/linux/windowsystem/xcb_memory.h"

#include <QGuiApplication>
#include <QTest>
#include <QWindow>
#include <gmock/gmock.h>

#include <xcb/xcb.h>

#include <algorithm>
#include <span>
#include <vector>

namespace zenlot {
namespace {

using testing::ElementsAre;

xcb_connection_t& connection() {
    return *x11Connection();
}

std::vector<std::uint32_t> property(const QWindow& window, const char* name) {
    const XcbPointer<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        &connection(),
        xcb_get_property(&connection(), 0, static_cast<std::uint32_t>(window.winId()),
                         x11Atom(connection(), name), XCB_ATOM_ANY, 0, 64),
        nullptr));
    if (!reply)
        return {};
    const std::span values(static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get())),
                           reply->value_len);
    return {values.begin(), values.end()};
}

// What the window manager has made of it.
bool skipsTaskbar(const QWindow& window) {
    return std::ranges::count(property(window, "_NET_WM_STATE"),
                              x11Atom(connection(), "_NET_WM_STATE_SKIP_TASKBAR")) == 1;
}

bool isManaged(const QWindow& window) {
    return !property(window, "WM_STATE").empty();
}

TEST(DesktopApplicationWindowsTest, KeepsItsWindowsFromTheTaskbarForAsLongAsItIsToldTo) {
    DesktopApplicationWindows windows;
    windows.setActivationPolicy(ActivationPolicy::accessory);
    QWindow window;
    for (int round = 0; round < 2; ++round) { // the window manager forgets it in between
        window.show();
        ASSERT_TRUE(QTest::qWaitFor([&] { return isManaged(window); }));
        EXPECT_TRUE(QTest::qWaitFor([&] { return skipsTaskbar(window); }));
        window.hide();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !isManaged(window) && !skipsTaskbar(window); }));
    }
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    windows.setActivationPolicy(ActivationPolicy::regular);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !skipsTaskbar(window); }));
    windows.setActivationPolicy(ActivationPolicy::accessory);
    EXPECT_TRUE(QTest::qWaitFor([&] { return skipsTaskbar(window); }));
}

TEST(DesktopApplicationWindowsTest, BringsForwardWhatIsOpenAlsoWhenItIsMinimised) {
    DesktopApplicationWindows windows;
    QWindow hidden;
    QWindow minimised;
    QWindow active;
    QWindow popup;
    popup.setFlags(Qt::Popup);
    QWindow unmanaged;
    unmanaged.setFlags(Qt::Window | Qt::BypassWindowManagerHint);
    for (QWindow* window : {&unmanaged, &minimised, &active}) {
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    }
    popup.show();
    minimised.showMinimized();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !minimised.isExposed(); }));
    EXPECT_THAT(windows.windows(), ElementsAre(&minimised, &active));
    popup.hide();

    windows.bringForward(active);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&active));
    windows.bringForward(minimised);
    EXPECT_TRUE(QTest::qWaitForWindowActive(&minimised));
    EXPECT_FALSE(minimised.windowStates().testFlag(Qt::WindowMinimized));
    EXPECT_FALSE(windows.blendsWindows()); // nothing composes this display
}

} // namespace
} // namespace zenlot
