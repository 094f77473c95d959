// The first run's window, by keyboard. How the monitor is allowed is tried on a whole desktop.
#include "shell/onboarding/after_next_frame.h"
#include "shell/onboarding/onboarding_view_model.h"
#include "shell/style/qml_window.h"
#include "support/sample_user.h"
#include "support/window_driver.h"

#include <QtQml/qqmlextensionplugin.h>

Q_IMPORT_QML_PLUGIN(Zenlot_OnboardingPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// A monitor that looks around while it is registered.
class WatchedAppService final : public AppService {
  public:
    explicit WatchedAppService(FakeAppService& monitor) : monitor_(monitor) {}

    std::function<void()> whileRegistering = [] {};

    AppServiceStatus status() const override { return monitor_.status(); }
    std::optional<AppServiceError> registerService() override {
        whileRegistering();
        return monitor_.registerService();
    }
    std::optional<AppServiceError> unregisterService() override { return std::nullopt; }

  private:
    FakeAppService& monitor_;
};

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

    WatchedAppService watched{monitor};
    LaunchAgentInstaller watchedInstaller{watched, systemLog, u"/opt/zenlot"_s};
    OnboardingViewModel* viewModel{nullptr};
    QQmlEngine engine;
    QmlWindow page{[this]() -> QQmlEngine& { return engine; }, "Onboarding/OnboardingWindow.qml",
                   [this](QObject& owner) -> QVariantMap {
                       viewModel = new OnboardingViewModel(
                           {settings, watchedInstaller, systemLog},
                           {.openLoginItems = openLoginItems,
                            .afterNextFrame =
                                [this](const std::function<void()>& function) {
                                    runAfterNextFrame(*window(), function);
                                }},
                           &owner);
                       return QmlWindow::showing(*viewModel)(owner);
                   }};
};

TEST_F(OnboardingTest, TellsWhyTheMonitorCanNotBeEnabledAndLetsItBeSkipped) {
    monitor.refusal = {u"org.x"_s, 7, u"<b>no</b>"_s};
    open();
    EXPECT_EQ(systemLog.messages, QStringList(u"[Zenlot] OnboardingView appeared, SMAppService "
                                              "status=notRegistered, isEnabled=false, "
                                              "isInstalled=false"_s));
    ASSERT_TRUE(comesToFocus(u"Enable"_s));
    // The words are on the screen before the registration begins.
    int frames = 0;
    int framesBefore = 0;
    QObject::connect(window(), &QQuickWindow::frameSwapped, window(),
                     [&] { frames += viewModel->daemonInstalling() ? 1 : 0; });
    watched.whileRegistering = [&] { framesBefore = frames; };
    press(Qt::Key_Return);
    EXPECT_NE(waitForItem(u"[org.x 7] <b>no</b>"_s), nullptr);
    EXPECT_GT(framesBefore, 0);
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
