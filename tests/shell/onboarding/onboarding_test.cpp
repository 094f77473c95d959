// The first run's window, by keyboard. How the monitor is allowed is tried on a whole desktop.
#include "shell/onboarding/onboarding_view_model.h"
#include "shell/style/qml_window.h"
#include "support/sample_user.h"
#include "support/window_driver.h"

#include <QSignalSpy>
#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Zenlot_OnboardingPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class OnboardingTest : public testing::Test, protected SampleUser, protected WindowDriver {
  protected:
    QQuickWindow* window() override { return page.window(); }
    void open() {
        engine.addImportPath(u":/qt/qml"_s);
        page.open()->show();
        window()->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window()));
        EXPECT_EQ(focused(), u"Folytatás"_s);
        press(Qt::Key_Return);
    }

    OnboardingViewModel* viewModel{nullptr};
    QQmlEngine engine;
    QmlWindow page{[this]() -> QQmlEngine& { return engine; }, "Onboarding/OnboardingWindow.qml",
                   [this](QObject& owner) -> QVariantMap {
                       viewModel =
                           new OnboardingViewModel({settings, installer, systemLog},
                                                   {.openLoginItems = openLoginItems}, &owner);
                       return QmlWindow::showing(*viewModel)(owner);
                   }};
};

TEST_F(OnboardingTest, TellsWhyTheMonitorCanNotBeEnabledAndLetsItBeSkipped) {
    monitor.refusal = {u"org.x"_s, 7, u"<b>no</b>"_s};
    open();
    EXPECT_TRUE(waitFor([&] { return !systemLog.messages.isEmpty(); }));
    EXPECT_EQ(systemLog.messages, QStringList(u"[Zenlot] OnboardingView appeared, SMAppService "
                                              "status=notRegistered, isEnabled=false, "
                                              "isInstalled=false"_s));
    ASSERT_TRUE(comesToFocus(u"Enable"_s));
    const QSignalSpy installing(viewModel, &OnboardingViewModel::daemonInstallingChanged);
    press(Qt::Key_Return);
    EXPECT_NE(waitForItem(u"[org.x 7] <b>no</b>"_s), nullptr);
    EXPECT_EQ(installing.size(), 2); // it has begun and ended
    EXPECT_EQ(loginItemsOpened, 0);

    forbidTheMonitor(); // which opens where it can be allowed
    ASSERT_TRUE(comesToFocus(u"Enable"_s)) << "it can be tried again";
    press(Qt::Key_Return);
    ASSERT_TRUE(comesToFocus(u"Open Login Items"_s));
    press(Qt::Key_Return);
    EXPECT_EQ(loginItemsOpened, 2);
    tabTo(u"Skip for now"_s);
    press(Qt::Key_Return);
    EXPECT_EQ(window(), nullptr);
    EXPECT_TRUE(settings.hasCompletedOnboarding());
}

TEST_F(OnboardingTest, NothingIsLeftToEnableWhenTheMonitorIs) {
    monitor.currentStatus = AppServiceStatus::enabled;
    open();
    const auto video = [this] { return window()->findChild<QQuickItem*>(u"video"_s); };
    EXPECT_EQ(video(), nullptr) << "nothing is loaded behind the first page";
    const QQuickItem* pages = window()->contentItem()->childItems().value(0);
    ASSERT_TRUE(waitFor([&] { return pages->property("position").toDouble() == 1; }));
    EXPECT_TRUE(waitFor([&] { return video() && video()->isVisible(); }));

    ASSERT_TRUE(comesToFocus(u"Folytatás"_s));
    press(Qt::Key_Return);
    EXPECT_EQ(window(), nullptr);
    EXPECT_TRUE(settings.hasCompletedOnboarding());
    EXPECT_EQ(monitor.registerCalls, 0);
}

TEST_F(OnboardingTest, ClosingTheWindowCompletesNothing) {
    open();
    window()->close();
    EXPECT_EQ(window(), nullptr);
    EXPECT_FALSE(settings.hasCompletedOnboarding());
}

} // namespace
} // namespace zenlot
