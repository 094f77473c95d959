#include "platform/linux/windowsystem/desktop_application_windows.h"
#include "platform/linux/windowsystem/x11_display.h"
#include "platform/linux/windowsystem/xcb_memory.h"

#include <QGuiApplication>
#include <QTest>
#include <QWindow>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <xcb/xcb.h>

#include <algorithm>
#include <span>

namespace zenlot {
namespace {

using testing::ElementsAre;

xcb_connection_t& connection() {
    return *qGuiApp->nativeInterface<QNativeInterface::QX11Application>()->connection();
}

// What the window manager has made of it.
bool skipsTaskbar(const QWindow& window) {
    const XcbPointer<xcb_get_property_reply_t> states(xcb_get_property_reply(
        &connection(),
        xcb_get_property(&connection(), 0, static_cast<std::uint32_t>(window.winId()),
                         x11Atom(connection(), "_NET_WM_STATE"), XCB_ATOM_ATOM, 0, 64),
        nullptr));
    if (!states)
        return false;
    const std::span atoms(static_cast<const xcb_atom_t*>(xcb_get_property_value(states.get())),
                          states->value_len);
    return std::ranges::find(atoms, x11Atom(connection(), "_NET_WM_STATE_SKIP_TASKBAR")) !=
           atoms.end();
}

TEST(DesktopApplicationWindowsTest, KeepsItsWindowsFromTheTaskbarForAsLongAsItIsToldTo) {
    DesktopApplicationWindows windows;
    windows.setActivationPolicy(ActivationPolicy::accessory);
    QWindow window;
    for (int round = 0; round < 2; ++round) { // the window manager forgets it in between
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
        EXPECT_TRUE(QTest::qWaitFor([&] { return skipsTaskbar(window); }));
        window.hide();
        ASSERT_TRUE(QTest::qWaitFor([&] { return !skipsTaskbar(window); }));
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
