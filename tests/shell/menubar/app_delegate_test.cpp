#include "platform/application_instance.h"
#include "platform/fake_application_windows.h"
#include "platform/fake_global_shortcut.h"
#include "platform/fake_status_bar.h"
#include "shell/menubar/app_delegate.h"
#include "shell/menubar/status_menu.h"
#include "shell/model/app_model.h"
#include "support/sample_inventory.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QPointer>
#include <QRegularExpression>
#include <QTest>
#include <QWindow>
#include <gmock/gmock.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

const Conflict kConflict{3000, {42, 1}, u"node"_s, u"Node"_s};

class AppDelegateTest : public testing::Test, public SampleInventory<>, public SampleUser {
  public:
    AppDelegateTest() {
        pinner.processes[42] = {.ports = {3000}, .refusesSignals = true};
        QObject::connect(
            &notifications, &NotificationCenter::conflictHandled,
            [this](const HandledConflict& conflict) { handled.push_back(conflict.port); });
        delegate.configure(settings, appModel);
    }

    void detect(const Conflict& conflict = kConflict) {
        Q_EMIT notifications.conflictDetected(conflict);
    }

    // Of the menu that panels show, with "-" for the lines.
    QStringList titles() const {
        QStringList titles;
        for (const Command& entry : bar.menu)
            titles.append(entry.title.isEmpty() ? u"-"_s : entry.title);
        return titles;
    }
    void choose(const QString& title) {
        for (const Command& entry : QList(bar.menu)) {
            if (entry.title == title)
                entry.run();
        }
        QCoreApplication::processEvents();
    }

    NotificationCenter notifications;
    FakeStatusBar bar;
    FakeGlobalShortcut shortcut;
    FakeApplicationWindows windows;
    AppModel appModel;
    std::vector<qint64> handled;  // the ports
    std::map<QString, int> calls; // of what the program as a whole does
    std::function<void()> count(const QString& what) {
        return [this, what] { ++calls[what]; };
    }
    AppDelegate delegate{{inventory, notifications, bar, shortcut, windows},
                         {.openMainWindow = count(u"main"_s),
                          .openSettings = count(u"settings"_s),
                          .checkForUpdates = count(u"updates"_s),
                          .focusPortField = count(u"field"_s),
                          .terminate = count(u"quit"_s)}};
    ActiveConflict& active = delegate.conflict();
};

TEST_F(AppDelegateTest, AConflictShowsInTheIconAndTheMenuUntilItIsCleared) {
    const QStringList standing = titles();
    const QString plain = bar.image.file;
    EXPECT_TRUE(plain.endsWith(u"MenuBarIcon.svg"_s));

    detect();
    detect({5432, {43}, u"postgres"_s, u"A\nB%1"_s});
    EXPECT_EQ(titles().at(2), u"Port 5432 blocked by A\uFFFDB%1"_s);
    EXPECT_EQ(bar.toolTip, titles().at(2));
    EXPECT_TRUE(bar.image.file.endsWith(u"MenuBarIconNotified.svg"_s));

    choose(u"Clear Conflict Indicator"_s);
    EXPECT_EQ(titles(), standing);
    EXPECT_EQ(bar.image.file, plain);
}

TEST_F(AppDelegateTest, AHandledConflictClearsTheOneThatItMatches) {
    const std::pair<HandledConflict, bool> cases[]{
        {{3000, {42}, u"node"_s}, true},     {{3000, {42, 1}, u"NODE"_s}, true},
        {{3000, {42}, u"MY APP"_s}, true},   {{3001, {42}, u"node"_s}, false},
        {{3000, {43}, u"node"_s}, false},    {{3000, {42}, u"nod"_s}, false},
        {{3000, {42, 7}, u"node"_s}, false}, {{3000, {42}, QString()}, false}};
    for (const auto& [done, clears] : cases) {
        detect({3000, {42, 1}, u"node"_s, u"My App"_s});
        Q_EMIT notifications.conflictHandled(done);
        EXPECT_EQ(!active.current(), clears) << qPrintable(done.name);
    }
}

TEST_F(AppDelegateTest, IgnoringAddsToBothListsInOrder) {
    settings.setMonitorIgnoredPorts({8080, 3000});
    settings.setConflictIgnoredPorts({8080, 80});
    settings.setMonitorIgnoredApps({u"ruby"_s, u"Postgres"_s});
    detect({5432, {42}, u"postgres"_s, u"Postgres"_s});
    choose(u"Ignore Port 5432"_s);
    EXPECT_THAT(settings.monitorIgnoredPorts(), ElementsAre(3000, 5432, 8080));
    EXPECT_THAT(settings.conflictIgnoredPorts(), ElementsAre(80, 5432, 8080));
    EXPECT_FALSE(active.current());

    detect({5432, {42}, u"postgres"_s, u"Postgres"_s});
    choose(u"Ignore Postgres"_s);
    EXPECT_THAT(settings.monitorIgnoredApps(),
                ElementsAre(u"Postgres"_s, u"postgres"_s, u"ruby"_s));
    EXPECT_THAT(settings.conflictIgnoredApps(), ElementsAre(u"postgres"_s));
    EXPECT_FALSE(active.current());

    detect({5432, {42}, QString(), u"Postgres"_s});
    choose(u"Ignore Postgres"_s);
    EXPECT_TRUE(active.current());
}

TEST_F(AppDelegateTest, AKillClearsItsConflictAlsoWhenItFailsButNoOther) {
    detect();
    choose(u"Kill Node"_s);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !active.current(); }));
    EXPECT_THAT(pinner.killed(), ElementsAre(42));
    EXPECT_THAT(handled, ElementsAre(3000)); // by which its alert goes

    detect();
    const QList<Command> old = bar.menu;
    active.killHolder();
    detect({3000, {43}, u"node"_s, u"Node"_s}); // mostly before the answer has come
    EXPECT_TRUE(QTest::qWaitFor([this] { return pinner.killed().size() == 2; }));
    // A menu that is still open names the conflict of before.
    for (const Command& entry : old) {
        if (entry.title == u"Kill Node"_s || entry.title == u"Clear Conflict Indicator"_s)
            entry.run();
    }
    QTest::qWait(0);
    ASSERT_TRUE(active.current());
    EXPECT_EQ(active.current()->holder.pid, 43);
    EXPECT_THAT(pinner.killed(), ElementsAre(42, 42));
}

TEST_F(AppDelegateTest, AKillIsOfferedOnlyWhereItMayBeDone) {
    detect({3000, {42, 1}, u"node"_s, u"Node"_s, ForceQuitObstacle::serviceManager});
    EXPECT_FALSE(titles().contains(u"Kill Node"_s));
    EXPECT_TRUE(titles().contains(u"Ignore Node"_s));
    active.killHolder();
    EXPECT_TRUE(active.current());
    EXPECT_THAT(pinner.killed(), ElementsAre());
}

TEST_F(AppDelegateTest, AnotherStartPrefersWhatIsOpenAndCanHaveTheKeyboard) {
    delegate.applicationShouldHandleReopen();
    EXPECT_EQ(calls[u"main"_s], 1);
    QWindow without;
    without.setFlag(Qt::WindowDoesNotAcceptFocus);
    windows.open = {&without};
    delegate.applicationShouldHandleReopen();
    QWindow with;
    windows.open = {&without, &with};
    delegate.applicationShouldHandleReopen();
    EXPECT_EQ(calls[u"main"_s], 1);
    EXPECT_THAT(windows.broughtForward, ElementsAre(&without, &with));

    for (const QString& title : {u"Settings…"_s, u"Check for Updates…"_s, u"Quit Zenlot"_s})
        choose(title);
    EXPECT_THAT(windows.orderedFront, ElementsAre(&without, &with));
    for (const QString& what : {u"settings"_s, u"updates"_s, u"quit"_s})
        EXPECT_EQ(calls[what], 1) << what.toStdString();
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
    EXPECT_TRUE(QTest::qWaitFor([this] { return calls[u"main"_s] == 1; }));
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

// Whoever has no icon, or a panel that can't show its menu, finds the commands in the window.
TEST_F(AppDelegateTest, AWindowHasTheCommandsWhereTheIconHasNot) {
    int changes = 0;
    QObject::connect(&delegate, &AppDelegate::windowMenuNeedChanged, [&] { ++changes; });
    const auto needs = [&](bool icon, bool available) {
        settings.setShowInMenuBar(icon);
        delegate.updateStatusItem(settings);
        bar.setAvailable(available);
        return delegate.needsWindowMenu();
    };
    EXPECT_TRUE(needs(true, false));
    EXPECT_TRUE(needs(false, true));
    EXPECT_FALSE(needs(true, true));
    EXPECT_GE(changes, 3);
    bar.click(std::nullopt);
    EXPECT_TRUE(delegate.needsWindowMenu());

    detect();
    QWindow window;
    delegate.openWindowMenu(window, QRect(10, 10, 30, 30));
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu);
    QStringList offered;
    for (const QAction* action : menu->actions())
        offered.append(action->isSeparator() ? u"-"_s : action->text());
    EXPECT_EQ(offered,
              (QStringList{u"Port 3000 blocked by Node"_s, u"Kill Node"_s, u"Ignore Port 3000"_s,
                           u"Ignore Node"_s, u"Clear Conflict Indicator"_s, u"-"_s, u"Settings…"_s,
                           u"-"_s, u"Check for Updates…"_s, u"-"_s, u"Quit Zenlot"_s}));
    menu->close();
}

// They are run by name from elsewhere, and the desktop's menus know those names.
TEST_F(AppDelegateTest, TheDesktopsEntryOffersCommandsThatThereAre) {
    QFile file(QStringLiteral(ZENLOT_DESKTOP_ENTRY));
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    const QString entry = QString::fromUtf8(file.readAll());
    const QString list = QRegularExpression(u"\nActions=(.*);\n"_s).match(entry).captured(1);
    const QStringList identifiers = list.split(u';');
    EXPECT_EQ(identifiers.size(), 3);
    for (const QString& identifier : identifiers) {
        EXPECT_TRUE(delegate.run(identifier)) << identifier.toStdString();
        EXPECT_TRUE(entry.contains(u"\nExec=@zenlot@ --"_s + identifier + u'\n'));
        EXPECT_EQ(urisAmong({u"--"_s + identifier}), QStringList(kCommandScheme + identifier));
    }
    QCoreApplication::processEvents();
    for (const QString& what : {u"field"_s, u"settings"_s, u"quit"_s})
        EXPECT_EQ(calls[what], 1) << what.toStdString();
    for (const QString& nothing : {u"background"_s, QString(), u"Quit Zenlot"_s})
        EXPECT_FALSE(delegate.run(nothing));
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
