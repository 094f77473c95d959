#include "platform/linux/windowsystem/desktop_application_windows.h"

#include <QTest>
#include <QWindow>
#include <gmock/gmock.h>

namespace zenlot {
namespace {

using testing::ElementsAre;

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
