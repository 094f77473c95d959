#include "inventory/fake_process_pinner.h"
#include "inventory/fake_process_tables.h"
#include "monitoring/notification_center.h"
#include "monitoring/port_inventory.h"
#include "platform/fake_app_service.h"
#include "platform/fake_application_windows.h"
#include "platform/fake_global_shortcut.h"
#include "platform/fake_status_bar.h"
#include "platform/fake_updater.h"
#include "platform/fake_user_defaults.h"
#include "settings/app_settings.h"
#include "shell/menubar/app_delegate.h"
#include "shell/menubar/status_menu.h"
#include "shell/model/app_model.h"
#include "shell/model/command.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include <QWindow>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

class AppDelegateTest : public testing::Test {
  public:
    AppDelegateTest() {
        processes.processes[42] = {.ports = {3000}, .refusesSignals = true};
        notifications.observe(kConflictHandled, &notifications, [this](const UserInfo& info) {
            handled.push_back(info.integer(kPortKey).value_or(-1));
        });
        delegate.setOpenMainWindow([this] { ++mainWindowOpened; });
        delegate.configure(settings, appModel);
    }

    static UserInfo conflictInfo(qint64 port, qint64 pid, const QString& process,
                                 const QString& display) {
        return {{kPortKey, port},
                {kPidKey, pid},
                {kProcessNameKey, process},
                {kDisplayNameKey, display}};
    }
    void detect(qint64 port = 3000, qint64 pid = 42, const QString& process = u"node"_s,
                const QString& display = u"Node"_s) {
        notifications.post(kConflictDetected, conflictInfo(port, pid, process, display));
    }

    // Of the menu that panels show, with "-" for the lines.
    QStringList titles() const {
        QStringList titles;
        for (const StatusMenuEntry& entry : bar.menu)
            titles.append(entry.title.isEmpty() ? u"-"_s : entry.title);
        return titles;
    }
    void choose(const QString& title) {
        for (const StatusMenuEntry& entry : QList(bar.menu)) {
            if (entry.title == title)
                entry.run();
        }
        QCoreApplication::processEvents();
    }

    FakeProcessTables tables;
    SharedPortCache cache;
    FakeProcessPinner processes;
    PortScanner scanner{tables, [](std::uint16_t, AddressFamily) { return false; }};
    PortLookup lookup{scanner, cache};
    PortInventory inventory{scanner, lookup, cache, processes};
    NotificationCenter notifications;
    FakeStatusBar bar;
    FakeGlobalShortcut shortcut;
    FakeApplicationWindows windows;
    FakeUpdater updater;
    FakeUserDefaults defaults;
    FakeAppService loginItem;
    AppSettings settings{defaults, loginItem};
    AppModel appModel;
    QPointer<QWindow> onboarding;
    std::vector<qint64> handled; // the ports
    int mainWindowOpened{0};
    int portFieldFocused{0};
    int terminated{0};
    AppDelegate delegate{{inventory, notifications, bar, shortcut, windows, updater},
                         {.makeOnboardingWindow =
                              [this](AppSettings&) {
                                  auto window = std::make_unique<QWindow>();
                                  onboarding = window.get();
                                  return window;
                              },
                          .focusPortField = [this] { ++portFieldFocused; },
                          .terminate = [this] { ++terminated; }}};
};

TEST_F(AppDelegateTest, AConflictShowsInTheIconAndTheMenuUntilItIsCleared) {
    const QStringList standing{u"Port number…"_s, u"-"_s, u"Open Zenlot"_s,        u"-"_s,
                               u"Settings…"_s,    u"-"_s, u"Check for Updates…"_s, u"-"_s,
                               u"Quit Zenlot"_s};
    EXPECT_EQ(titles(), standing);
    const QString plain = bar.image.file;
    EXPECT_TRUE(plain.endsWith(u"MenuBarIcon.svg"_s));

    detect(3000, 42, u"node"_s, u"Node"_s);
    detect(5432, 43, u"postgres"_s, u"A\nB%1"_s);
    EXPECT_THAT(titles(),
                ElementsAre(u"Port number…"_s, u"-"_s, u"Port 5432 blocked by A\uFFFDB%1"_s,
                            u"Kill A\uFFFDB%1"_s, u"Ignore Port 5432"_s, u"Ignore A\uFFFDB%1"_s,
                            u"Clear Conflict Indicator"_s, u"-"_s, u"Open Zenlot"_s, u"-"_s,
                            u"Settings…"_s, u"-"_s, u"Check for Updates…"_s, u"-"_s,
                            u"Quit Zenlot"_s));
    EXPECT_EQ(bar.toolTip, u"Port 5432 blocked by A\uFFFDB%1"_s);
    EXPECT_TRUE(bar.image.file.endsWith(u"MenuBarIconNotified.svg"_s));

    choose(u"Clear Conflict Indicator"_s);
    EXPECT_EQ(titles(), standing);
    EXPECT_EQ(bar.image.file, plain);
}

TEST_F(AppDelegateTest, IncompleteConflictsAreIgnored) {
    const UserInfo complete = conflictInfo(3000, 42, u"node"_s, u"Node"_s);
    for (const QLatin1StringView key : {kPortKey, kPidKey, kProcessNameKey, kDisplayNameKey}) {
        UserInfo info = complete;
        // Of the other type.
        info.set(key, complete.integer(key) ? UserInfo::Value(u"3000"_s) : UserInfo::Value(7));
        notifications.post(kConflictDetected, info);
        EXPECT_FALSE(delegate.activeConflict()) << key.data();
    }
}

TEST_F(AppDelegateTest, AHandledConflictClearsTheOneThatItMatches) {
    struct Case {
        UserInfo info;
        bool clears;
    };
    const Case cases[]{
        {{}, true},
        {{{kPortKey, 3000}, {kPidKey, 42}, {kProcessNameKey, u"node"_s}}, true},
        {{{kProcessNameKey, u"NODE"_s}}, true},
        {{{kProcessNameKey, u"MY APP"_s}}, true},
        {{{kPortKey, u"1"_s}, {kPidKey, u"1"_s}, {kProcessNameKey, 1}}, true}, // says nothing
        {{{kPortKey, 3001}, {kProcessNameKey, u"node"_s}}, false},
        {{{kPidKey, 43}, {kProcessNameKey, u"NODE"_s}}, false},
        {{{kProcessNameKey, u"nod"_s}}, false},
        {{{kProcessNameKey, QString()}}, false},
    };
    for (std::size_t index = 0; index < std::size(cases); ++index) {
        detect(3000, 42, u"node"_s, u"My App"_s);
        notifications.post(kConflictHandled, cases[index].info);
        EXPECT_EQ(!delegate.activeConflict(), cases[index].clears) << "case " << index;
    }
}

TEST_F(AppDelegateTest, IgnoringAddsToBothListsInOrder) {
    settings.setMonitorIgnoredPorts({8080, 3000});
    settings.setConflictIgnoredPorts({5432, 80});
    settings.setMonitorIgnoredApps({u"ruby"_s, u"Postgres"_s});
    detect(5432, 42, u"postgres"_s, u"Postgres"_s);
    choose(u"Ignore Port 5432"_s);
    EXPECT_THAT(settings.monitorIgnoredPorts(), ElementsAre(3000, 5432, 8080));
    EXPECT_THAT(settings.conflictIgnoredPorts(), ElementsAre(5432, 80)); // had it
    EXPECT_FALSE(delegate.activeConflict());

    detect(5432, 42, u"postgres"_s, u"Postgres"_s);
    choose(u"Ignore Postgres"_s);
    EXPECT_THAT(settings.monitorIgnoredApps(),
                ElementsAre(u"Postgres"_s, u"postgres"_s, u"ruby"_s));
    EXPECT_THAT(settings.conflictIgnoredApps(), ElementsAre(u"postgres"_s));
    EXPECT_FALSE(delegate.activeConflict());

    detect(5432, 42, QString(), u"Postgres"_s);
    choose(u"Ignore Postgres"_s);
    EXPECT_TRUE(delegate.activeConflict());
}

TEST_F(AppDelegateTest, AKillClearsItsConflictAlsoWhenItFailsButNoOther) {
    detect(3000, 42);
    choose(u"Kill Node"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !delegate.activeConflict(); }));
    EXPECT_THAT(processes.killed(), ElementsAre(42));
    EXPECT_THAT(handled, ElementsAre(3000)); // by which its alert goes

    detect(3000, 42);
    const QList<StatusMenuEntry> old = bar.menu;
    delegate.killConflictingProcess();
    detect(3000, 43); // before the answer has come
    EXPECT_TRUE(QTest::qWaitFor([this] { return processes.killed().size() == 2; }));
    // A menu that is still open names the conflict of before.
    for (const StatusMenuEntry& entry : old) {
        if (entry.title == u"Kill Node"_s || entry.title == u"Clear Conflict Indicator"_s)
            entry.run();
    }
    QTest::qWait(0);
    ASSERT_TRUE(delegate.activeConflict());
    EXPECT_EQ(delegate.activeConflict()->pid, 43);
    EXPECT_THAT(processes.killed(), ElementsAre(42, 42));
    EXPECT_THAT(handled, ElementsAre(3000));
}

TEST_F(AppDelegateTest, AKillIsForTheProcessThatWasDetectedIfItMayBeEnded) {
    UserInfo info = conflictInfo(3000, 42, u"node"_s, u"Node"_s);
    info.set(kStartTimeKey, 7); // the process that has the id now started at 1
    notifications.post(kConflictDetected, info);
    choose(u"Kill Node"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !delegate.activeConflict(); }));
    EXPECT_THAT(processes.killed(), ElementsAre());

    info.set(kObstacleKey, static_cast<std::int64_t>(ForceQuitObstacle::serviceManager));
    info.set(kStartTimeKey, 1);
    notifications.post(kConflictDetected, info);
    EXPECT_FALSE(titles().contains(u"Kill Node"_s));
    EXPECT_TRUE(titles().contains(u"Ignore Node"_s));
    delegate.killConflictingProcess();
    EXPECT_TRUE(delegate.activeConflict());
    // One that was handled for an earlier process with that id is another conflict.
    notifications.post(kConflictHandled, {{kPidKey, 42}, {kStartTimeKey, 7}});
    EXPECT_TRUE(delegate.activeConflict());
    notifications.post(kConflictHandled, {{kPidKey, 42}, {kStartTimeKey, 1}});
    EXPECT_FALSE(delegate.activeConflict());
    EXPECT_THAT(processes.killed(), ElementsAre());
}

TEST_F(AppDelegateTest, TheItemFollowsItsSettingAndKeepsTheConflict) {
    settings.setShowInMenuBar(false);
    delegate.updateStatusItem(settings);
    EXPECT_FALSE(bar.hasItem);
    detect();
    EXPECT_TRUE(delegate.activeConflict());
    settings.setShowInMenuBar(true);
    delegate.updateStatusItem(settings);
    EXPECT_TRUE(bar.hasItem);
    EXPECT_TRUE(bar.image.file.endsWith(u"MenuBarIconNotified.svg"_s));
}

TEST_F(AppDelegateTest, EverySurfaceFollowsItsCommands) {
    delegate.updatesCommand().setEnabled(false);
    EXPECT_FALSE(bar.menu.at(6).isEnabled);
    EXPECT_FALSE(delegate.menu().actions().at(6)->isEnabled());
    choose(u"Check for Updates…"_s);
    EXPECT_EQ(updater.checks, 0);
    delegate.updatesCommand().setEnabled(true);
    choose(u"Check for Updates…"_s);
    EXPECT_EQ(updater.checks, 1);
    choose(u"Quit Zenlot"_s);
    EXPECT_EQ(terminated, 1);
}

TEST_F(AppDelegateTest, OpeningPrefersWhatIsOpenAndCanHaveTheKeyboard) {
    choose(u"Open Zenlot"_s);
    EXPECT_EQ(mainWindowOpened, 1);
    QWindow without;
    without.setFlag(Qt::WindowDoesNotAcceptFocus);
    windows.open = {&without};
    choose(u"Open Zenlot"_s);
    QWindow with;
    windows.open = {&without, &with};
    choose(u"Port number…"_s);
    bar.click(std::nullopt); // no place for a menu
    QCoreApplication::processEvents();
    delegate.applicationShouldHandleReopen();
    EXPECT_EQ(mainWindowOpened, 1);
    EXPECT_EQ(portFieldFocused, 2);
    EXPECT_THAT(windows.broughtForward, ElementsAre(&without, &with, &with, &with));
}

TEST_F(AppDelegateTest, SettingsOpenDirectlyOrThroughTheMainWindow) {
    QWindow main;
    windows.open = {&main};
    choose(u"Settings…"_s);
    EXPECT_TRUE(appModel.openSettingsRequested());
    EXPECT_THAT(windows.broughtForward, ElementsAre(&main));

    appModel.setOpenSettingsRequested(false);
    int opened = 0;
    delegate.setOpenSettingsAction([&] { ++opened; });
    choose(u"Settings…"_s);
    EXPECT_EQ(opened, 1);
    EXPECT_FALSE(appModel.openSettingsRequested());
}

TEST_F(AppDelegateTest, TheShortcutNeedsTheIcon) {
    const auto isInstalledWith = [this](bool icon, bool enabled) {
        settings.setShowInMenuBar(icon);
        settings.setGlobalShortcutEnabled(enabled);
        delegate.updateGlobalShortcut(settings);
        return shortcut.isInstalled();
    };
    EXPECT_FALSE(isInstalledWith(true, false));
    EXPECT_FALSE(isInstalledWith(false, true));
    EXPECT_TRUE(isInstalledWith(true, true));
    shortcut.press();
    EXPECT_TRUE(QTest::qWaitFor([this] { return mainWindowOpened == 1; }));
    EXPECT_FALSE(isInstalledWith(false, true));
}

TEST_F(AppDelegateTest, WithoutAStatusAreaThePolicyIsRegularAndNothingJumps) {
    QWindow main;
    windows.open = {&main};
    EXPECT_EQ(windows.activationPolicy(), ActivationPolicy::accessory);
    bar.setAvailable(false);
    EXPECT_EQ(windows.activationPolicy(), ActivationPolicy::regular);
    bar.setAvailable(true);
    EXPECT_EQ(windows.activationPolicy(), ActivationPolicy::accessory);
    EXPECT_THAT(windows.orderedFront, ElementsAre());
    settings.setShowInDock(true);
    delegate.applyActivationPolicy(settings);
    EXPECT_EQ(windows.activationPolicy(), ActivationPolicy::regular);
    EXPECT_THAT(windows.orderedFront, ElementsAre(&main));
}

TEST_F(AppDelegateTest, OnboardingIsOneWindowAboveTheMainOne) {
    QWindow main;
    main.setObjectName(u"main"_s);
    windows.open = {&main};
    delegate.showOnboardingWindow(settings);
    ASSERT_TRUE(onboarding);
    EXPECT_EQ(onboarding->objectName(), u"onboarding"_s);
    EXPECT_EQ(onboarding->title(), u"Welcome to Zenlot"_s);
    EXPECT_EQ(onboarding->size(), QSize(440, 540));
    EXPECT_EQ(onboarding->transientParent(), &main);
    const QWindow* first = onboarding;
    windows.open.append(onboarding);
    delegate.showOnboardingWindow(settings);
    EXPECT_EQ(onboarding, first);
    EXPECT_THAT(windows.broughtForward, ElementsAre(first, first));
    delegate.closeOnboardingWindow();
    EXPECT_TRUE(QTest::qWaitFor([this] { return onboarding.isNull(); }));
}

TEST_F(AppDelegateTest, AValidPortIsHandedOnAndClosesTheMenu) {
    struct Case {
        QString text;
        std::optional<qint64> port;
    };
    const Case cases[]{{u"80a80"_s, 8080},
                       {u" 1 "_s, 1},
                       {u"65535"_s, 65535},
                       {u"-22"_s, 22},
                       {u"70000"_s, {}},
                       {u"0"_s, {}},
                       {u"http"_s, {}},
                       {u"٨٠"_s, {}},
                       {u"8²"_s, {}},
                       {QString(), {}},
                       {u"99999999999999999999"_s, {}}};
    for (const Case& one : cases) {
        SCOPED_TRACE(one.text.toStdString());
        appModel.setPendingPort(std::nullopt);
        mainWindowOpened = 0;
        bar.click(QRect(10, 0, 20, 20));
        StatusMenu& menu = delegate.menu();
        menu.searchField().setText(one.text);
        QTest::keyClick(&menu.searchField(), Qt::Key_Return);
        EXPECT_EQ(appModel.pendingPort(), one.port);
        EXPECT_EQ(menu.isVisible(), !one.port);
        EXPECT_EQ(menu.searchField().text(), one.port ? QString() : one.text);
        QCoreApplication::processEvents();
        EXPECT_EQ(mainWindowOpened, one.port ? 1 : 0);
        if (!one.port)
            bar.click(QRect(10, 0, 20, 20)); // closes it
        EXPECT_FALSE(menu.isVisible());
    }
}

TEST_F(AppDelegateTest, AnOpenMenuStaysAsItIsWhenAConflictComes) {
    bar.click(QRect(10, 0, 20, 20));
    const QPointer<StatusMenu> open = &delegate.menu();
    open->searchField().setText(u"80"_s);
    detect();
    EXPECT_NE(&delegate.menu(), open);
    ASSERT_TRUE(open);
    EXPECT_TRUE(open->isVisible());
    QTest::keyClick(&open->searchField(), Qt::Key_Return);
    EXPECT_EQ(appModel.pendingPort(), 80);
    EXPECT_TRUE(QTest::qWaitFor([&] { return open.isNull(); }));
}

} // namespace
} // namespace zenlot
