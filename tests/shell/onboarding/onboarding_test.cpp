#include "platform/fake_app_service.h"
#include "platform/fake_background_items_settings.h"
#include "platform/fake_system_log.h"
#include "platform/fake_user_defaults.h"
#include "shell/onboarding/onboarding_window.h"

#include <QAccessible>
#include <QQuickItem>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>

Q_IMPORT_QML_PLUGIN(Zenlot_OnboardingPlugin)
Q_IMPORT_QML_PLUGIN(Zenlot_StylePlugin)

namespace zenlot {
namespace {

const QString kStillBlocked =
    QStringLiteral("Zenlot is still blocked. Toggle \"Allow in the Background\" on for Zenlot in "
                   "System Settings → General → Login Items & Extensions.");

// An agent that looks around while it is registered.
class WatchedAppService final : public AppService {
  public:
    FakeAppService fake;
    std::function<void()> whileRegistering;

    AppServiceStatus status() const override { return fake.status(); }
    std::optional<AppServiceError> registerService() override {
        if (whileRegistering)
            whileRegistering();
        return fake.registerService();
    }
    std::optional<AppServiceError> unregisterService() override { return fake.unregisterService(); }
};

// The desktop around the first run.
struct Desktop {
    FakeUserDefaults defaults;
    FakeAppService loginItem;
    WatchedAppService agent;
    FakeSystemLog log;
    FakeBackgroundItemsSettings loginItems;
    AppSettings settings{defaults, loginItem};
    LaunchAgentInstaller installer{agent, log, QStringLiteral("/opt/zenlot")};
    OnboardingViewModel::Collaborators collaborators{settings, installer, loginItems, log};
    int closings{0};
};

TEST(OnboardingViewModelTest, EveryWayOutAndEveryFailure) {
    const AppServiceError refused{QStringLiteral("org.x"), 7, QStringLiteral("<b>no</b>")};
    const QString blocked = InstallError::requiresApproval().description();
    using Status = AppServiceStatus;
    using Model = OnboardingViewModel;
    const struct { // NOLINT(clang-analyzer-optin.performance.Padding): told in its order
        const char* name;
        Status before;
        std::optional<AppServiceError> refusal;
        Status after; // what the user or the registration made of it
        void (Model::*last)();
        bool isDone;
        bool installed;
        bool needsApproval;
        QString error;
        int openings;
    } cases[] = {
        {"enabled", Status::notRegistered, {}, Status::enabled, nullptr, true, false, false, {}, 0},
        {"refused", Status::notFound, refused, Status::notFound, nullptr, false, false, false,
         QStringLiteral("[org.x 7] <b>no</b>"), 0},
        {"blocked",
         Status::requiresApproval,
         {},
         Status::requiresApproval,
         nullptr,
         false,
         false,
         true,
         blocked,
         1},
        {"skipped", Status::notRegistered, refused, Status::notRegistered, &Model::finish, true,
         false, false, QStringLiteral("[org.x 7] <b>no</b>"), 0},
        {"still blocked",
         Status::requiresApproval,
         {},
         Status::requiresApproval,
         &Model::recheckApproval,
         false,
         false,
         true,
         kStillBlocked,
         1},
        {"allowed",
         Status::requiresApproval,
         {},
         Status::enabled,
         &Model::recheckApproval,
         true,
         true,
         false,
         {},
         1},
        {"opened again",
         Status::requiresApproval,
         {},
         Status::enabled,
         &Model::openLoginItems,
         false,
         false,
         true,
         blocked,
         2},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        Desktop desktop;
        desktop.agent.fake.currentStatus = test.before;
        desktop.agent.fake.statusAfterRegistering = test.after;
        desktop.agent.fake.refusal = test.refusal;
        Model model(desktop.collaborators, {.closeWindow = [&] { ++desktop.closings; }});
        desktop.agent.whileRegistering = [&] {
            EXPECT_TRUE(model.daemonInstalling());
            EXPECT_TRUE(model.installError().isEmpty());
        };
        EXPECT_FALSE(model.daemonInstalled());
        model.advance();
        EXPECT_EQ(model.page(), 1);
        model.enableBackgroundMonitor();
        desktop.agent.whileRegistering = nullptr;
        desktop.agent.fake.currentStatus = test.after;
        if (test.last)
            (model.*test.last)();
        EXPECT_EQ(desktop.settings.hasCompletedOnboarding(), test.isDone);
        EXPECT_EQ(desktop.closings, test.isDone ? 1 : 0);
        EXPECT_EQ(model.daemonInstalled(), test.installed);
        EXPECT_EQ(model.needsApproval(), test.needsApproval);
        EXPECT_EQ(model.installError(), test.error);
        EXPECT_EQ(desktop.loginItems.openings, test.openings);
        if (!test.isDone) {
            EXPECT_FALSE(model.daemonInstalling()) << "can be tried again";
        }
    }
}

TEST(OnboardingViewModelTest, TellsTheSystemLogHowTheMonitorStands) {
    Desktop desktop;
    desktop.agent.fake.currentStatus = AppServiceStatus::requiresApproval;
    OnboardingViewModel model(desktop.collaborators, {});
    model.appear();
    EXPECT_EQ(desktop.log.messages,
              QStringList(QStringLiteral("[Zenlot] OnboardingView appeared, SMAppService "
                                         "status=requiresApproval, isEnabled=false, "
                                         "isInstalled=true")));
    model.finish(); // with nobody to close the window
    EXPECT_TRUE(desktop.settings.hasCompletedOnboarding());
}

class OnboardingWindowTest : public testing::Test {
  protected:
    void open() {
        window = std::make_unique<OnboardingWindow>(desktop.collaborators, [this] {
            ++desktop.closings;
            window.reset(); // as harsh as it gets
        });
        window->show();
        window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    void press(Qt::Key key) { QTest::keyClick(window.get(), key); }

    QString focused() const {
        QAccessibleInterface* item =
            QAccessible::queryAccessibleInterface(window->activeFocusItem());
        return item ? item->text(QAccessible::Name) : QString();
    }

    bool comesToFocus(const QString& name) {
        return QTest::qWaitFor([&] { return focused() == name; }, 10'000);
    }

    Desktop desktop;
    std::unique_ptr<OnboardingWindow> window;
};

TEST_F(OnboardingWindowTest, ReturnLeadsThroughToTheApproval) {
    open();
    EXPECT_EQ(focused(), QStringLiteral("Folytatás"));
    press(Qt::Key_Return);
    ASSERT_TRUE(comesToFocus(QStringLiteral("Enable")));
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), QStringLiteral("Skip for now"));
    press(Qt::Key_Backtab);

    // The words are on the screen before the registration begins.
    desktop.agent.fake.statusAfterRegistering = AppServiceStatus::requiresApproval;
    int frames = 0;
    int framesBefore = 0;
    QObject::connect(window.get(), &QQuickWindow::frameSwapped, window.get(),
                     [&] { frames += window->viewModel().daemonInstalling() ? 1 : 0; });
    desktop.agent.whileRegistering = [&] { framesBefore = frames; };
    press(Qt::Key_Return);
    ASSERT_TRUE(comesToFocus(QStringLiteral("Open Login Items")));
    EXPECT_GT(framesBefore, 0);
    press(Qt::Key_Return);
    EXPECT_EQ(desktop.loginItems.openings, 2);

    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), QStringLiteral("I've enabled it — re-check"));
    press(Qt::Key_Return);
    EXPECT_EQ(window->viewModel().installError(), kStillBlocked);
    desktop.agent.fake.currentStatus = AppServiceStatus::enabled;
    press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window; }, 10'000));
    EXPECT_EQ(desktop.closings, 1);
    EXPECT_EQ(desktop.agent.fake.registerCalls, 2) << "what was allowed is not started by that";
    EXPECT_TRUE(desktop.settings.hasCompletedOnboarding());
}

TEST_F(OnboardingWindowTest, NothingIsLeftToEnableWhenTheMonitorIs) {
    desktop.agent.fake.currentStatus = AppServiceStatus::enabled;
    open();
    auto* video = window->rootObject()->findChild<QQuickItem*>(QStringLiteral("video"));
    ASSERT_NE(video, nullptr);
    EXPECT_FALSE(video->isVisible()) << "nothing is decoded behind the first page";
    press(Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([&] { return video->isVisible(); }, 10'000));
    const auto picture = [&] { return window->grabWindow().copy(0, 28, 440, 150); };
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return window->rootObject()->property("position").toDouble() == 1; }, 10'000));
    const QImage first = picture();
    EXPECT_TRUE(QTest::qWaitFor([&] { return picture() != first; }, 10'000)) << "frames change";

    ASSERT_TRUE(comesToFocus(QStringLiteral("Folytatás")));
    press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window; }, 10'000));
    EXPECT_TRUE(desktop.settings.hasCompletedOnboarding());
    EXPECT_EQ(desktop.agent.fake.registerCalls, 0);
}

TEST_F(OnboardingWindowTest, ClosingTheWindowCompletesNothing) {
    open();
    window->close();
    EXPECT_FALSE(desktop.settings.hasCompletedOnboarding());
    EXPECT_EQ(desktop.closings, 0);
}

} // namespace
} // namespace zenlot
