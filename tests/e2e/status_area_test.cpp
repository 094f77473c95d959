// The program in the status area of a real panel: found there, asked there and ended there.
#include "e2e/accessible_tree.h"
#include "e2e/alert_screen.h"
#include "e2e/private_desktop.h"
#include "e2e/stall_watch.h"
#include "e2e/stand_in_monitor.h"

#include <QDBusConnectionInterface>
#include <QDBusReply>
#include <QRegularExpression>
#include <gmock/gmock.h>

#include <csignal>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

constexpr const char* kPanel = R"(<channel name="xfce4-panel" version="1.0">
    <property name="configver" type="int" value="2"/>
    <property name="panels" type="array">
        <value type="int" value="1"/>
        <property name="panel-1" type="empty">
            <property name="position" type="string" value="p=6;x=0;y=0"/>
            <property name="length" type="uint" value="100"/>
            <property name="size" type="uint" value="30"/>
            <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
        </property>
    </property>
    <property name="plugins" type="empty">
        <property name="plugin-1" type="string" value="systray"/>
    </property>
</channel>)";

class PanelTest : public testing::Test {
  protected:
    PanelTest() {
        desktop.files().write("XDG_CONFIG_HOME/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml",
                              kPanel);
        desktop.writeSettings(kWatching);
    }
    ~PanelTest() override { QDBusConnection::disconnectFromBus(bus.name()); }

    void startInBackground() {
        zenlot = &desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s});
    }

    QVariantList ask(const QString& service, const QString& path, const QString& interface,
                     const QString& method, const QVariantList& arguments) const {
        QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
        message.setArguments(arguments);
        return bus.call(message).arguments();
    }

    // Its name on the bus; empty before the panel has it.
    QString registeredItem() const {
        const QVariantList items =
            ask(u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
                u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
                {u"org.kde.StatusNotifierWatcher"_s, u"RegisteredStatusNotifierItems"_s});
        const QStringList names = items.value(0).value<QDBusVariant>().variant().toStringList();
        return names.value(0).section(u'/', 0, 0);
    }

    void expectEnd(QProcess& process, int code = 0) {
        ASSERT_TRUE(PrivateDesktop::hasEnded(process));
        EXPECT_EQ(process.exitCode(), code) << process.readAllStandardError().toStdString();
        EXPECT_EQ(process.exitStatus(), code == 0 ? QProcess::NormalExit : QProcess::CrashExit);
    }

    bool comesToItem() {
        return waitUntil([this] { return !(item = registeredItem()).isEmpty(); });
    }

    PrivateDesktop desktop;
    AlertScreen alerts{desktop}; // or the program would start another server
    StandInMonitor monitor{desktop};
    QDBusConnection bus = QDBusConnection::connectToBus(desktop.sessionBus(), u"e2e status"_s);
    QProcess* zenlot = nullptr;
    QString item;
};

class StatusAreaTest : public PanelTest {
  protected:
    StatusAreaTest() : panel(&desktop.start("xfce4-panel")) { startInBackground(); }

    void SetUp() override {
        ASSERT_TRUE(comesToItem()) << zenlot->readAllStandardError().toStdString();
        server = &desktop.startServer(u"Sampled"_s);
        port = PrivateDesktop::portOf(*server);
        row = u"Sampled TCP4 LISTEN PID %1 *:%2 "_s.arg(server->processId()).arg(port);
    }

    // The background monitor tells that the server holds its port. In a panel's menu "&" and "_"
    // would have a meaning, so the server's name gets there as "R+D__web".
    void announceConflict() {
        monitor.addConflict(port.toInt(), server->processId(), u"Sampled"_s, u"R&D_web"_s);
        monitor.broadcast("dev.quorvane.zenlot.conflictsUpdated");
    }

    // What the panel shows of the menu: the numbers of the commands, and their titles in order.
    std::vector<std::string> readMenu(QHash<QString, int>* numbers = nullptr) const {
        const auto layout = ask(item, u"/MenuBar"_s, u"com.canonical.dbusmenu"_s, u"GetLayout"_s,
                                {0, -1, QStringList()})
                                .value(1);
        std::vector<std::string> titles;
        for (const QVariant& child : entry(layout).children) {
            const Entry command = entry(child);
            if (command.title.isEmpty())
                continue;
            titles.push_back(command.title.toStdString());
            if (numbers)
                numbers->insert(command.title, command.number);
        }
        return titles;
    }

    template <typename Matcher>
    void expectMenu(Matcher matcher) const {
        const auto fits = [&] { return testing::Value(readMenu(), matcher); };
        if (!waitUntil(fits)) {
            EXPECT_THAT(readMenu(), matcher);
        }
    }

    void choose(const QString& title) const {
        QHash<QString, int> numbers;
        readMenu(&numbers);
        ASSERT_TRUE(numbers.contains(title)) << title.toStdString();
        ask(item, u"/MenuBar"_s, u"com.canonical.dbusmenu"_s, u"Event"_s,
            {numbers[title], u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
    }

    AccessibleTree tree{desktop.sessionBus()};
    QProcess* panel;
    QProcess* server = nullptr;
    QString port;
    QString row;

  private:
    struct Entry {
        int number = 0;
        QString title;
        QVariantList children;
    };
    static Entry entry(const QVariant& value) {
        Entry read;
        QVariantMap properties;
        const auto argument = value.value<QDBusArgument>();
        if (argument.currentType() != QDBusArgument::StructureType)
            return read;
        argument.beginStructure();
        argument >> read.number >> properties >> read.children;
        argument.endStructure();
        read.title = properties.value(u"label"_s).toString();
        return read;
    }
};

constexpr auto kAlways = [] {
    return ElementsAre("Port number\u2026", "Open Zenlot", "Settings\u2026",
                       "Check for Updates\u2026", "Quit Zenlot");
};

TEST_F(StatusAreaTest, PortTypedAfterAClickIsLookedUpInTheWindow) {
    // The panel shows the icon some time after it has learned of it. The toolkit keeps popups from
    // the accessible tree.
    bool isOpen = false;
    for (int attempt = 0; attempt < 20 && !isOpen; ++attempt) {
        desktop.input(u"mousemove 16 15 click 1"_s.split(u' '));
        isOpen = QTest::qWaitFor(
            [this] {
                return desktop.input(u"search --onlyvisible --class ^zenlot$"_s.split(u' ')) == 0;
            },
            5000);
    }
    ASSERT_TRUE(isOpen);
    desktop.input({u"type"_s, QString(port).insert(2, u'a')});
    desktop.input({u"key"_s, u"Return"_s});
    EXPECT_TRUE(tree.find("frame", u"Zenlot"_s, AccessibleTree::State::active));
    EXPECT_TRUE(tree.find("list item", row));

    zenlot->terminate();
    expectEnd(*zenlot);
}

TEST_F(StatusAreaTest, TheMenuLeadsToTheMainWindowWhileSettingsAreOpen) {
    expectMenu(kAlways());
    choose(u"Settings\u2026"_s);
    ASSERT_TRUE(tree.find("frame", u"Settings"_s, AccessibleTree::State::active));
    choose(u"Port number\u2026"_s);
    EXPECT_TRUE(tree.find("frame", u"Zenlot"_s, AccessibleTree::State::active));
    EXPECT_TRUE(tree.find("text", u"Port"_s, AccessibleTree::State::focused));
}

// It may end, or stop, at any moment: nobody waits for it, and what comes meanwhile is in the menu
// when it is there again.
TEST_F(StatusAreaTest, TheItemIsThereWheneverAPanelIs) {
    StallWatch watch(desktop.sessionBus(), zenlot->processId());
    for (const int signal : {SIGSTOP, SIGTERM, SIGKILL}) {
        SCOPED_TRACE(signal);
        ::kill(static_cast<pid_t>(panel->processId()), signal);
        ASSERT_TRUE(signal == SIGSTOP || panel->waitForFinished(kPatience));
        announceConflict();
        ASSERT_TRUE(
            desktop.waitForLog("posting notification id=zenlot-conflict-" + port.toStdString()));
        if (signal == SIGSTOP)
            ::kill(static_cast<pid_t>(panel->processId()), SIGCONT);
        else
            panel = &desktop.start("xfce4-panel");
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return !(item = registeredItem()).isEmpty(); }, kPatience));
        expectMenu(testing::Contains(testing::HasSubstr(port.toStdString())));
        server->kill();
        server->waitForFinished();
        server = &desktop.startServer(u"Sampled"_s);
        port = PrivateDesktop::portOf(*server);
    }
    EXPECT_LE(watch.longest(), StallWatch::kBound);
    ::kill(static_cast<pid_t>(panel->processId()), SIGSTOP);
    zenlot->terminate();
    expectEnd(*zenlot);
    ::kill(static_cast<pid_t>(panel->processId()), SIGCONT);
}

TEST_F(StatusAreaTest, ConflictIsShownAndKilledInTheMenu) {
    expectMenu(kAlways());
    announceConflict();
    expectMenu(ElementsAre(
        "Port number\u2026", "Port " + port.toStdString() + " blocked by R+D__web", "Kill R+D__web",
        "Ignore Port " + port.toStdString(), "Ignore R+D__web", "Clear Conflict Indicator",
        "Open Zenlot", "Settings\u2026", "Check for Updates\u2026", "Quit Zenlot"));

    choose(u"Kill R+D__web"_s);
    expectEnd(*server, SIGKILL);
    expectMenu(kAlways());
    choose(u"Quit Zenlot"_s);
    expectEnd(*zenlot);
}

TEST_F(StatusAreaTest, ConflictGoesWithItsHolderFromMenuAndScreen) {
    expectMenu(kAlways());
    const qint64 holder = server->processId();
    announceConflict();
    expectMenu(testing::Contains("Kill R+D__web"));
    const QString title = u"Port %1 is already in use"_s.arg(port);
    ASSERT_TRUE(alerts.shows(title));

    server->terminate();
    expectEnd(*server, SIGTERM);
    expectMenu(kAlways());
    EXPECT_TRUE(alerts.hides(title));

    // What has ended by the time it is read blocks nobody.
    monitor.addConflict(port.toInt(), holder, u"Sampled"_s, u"R&D_web"_s);
    monitor.broadcast("dev.quorvane.zenlot.conflictsUpdated");
    EXPECT_TRUE(
        desktop.waitForLog("conflict ignored port=" + port.toStdString() + ": holder has ended"));
    expectMenu(kAlways());
}

TEST_F(StatusAreaTest, LaterStartLooksItsPortUpInTheRunningProgram) {
    for (const char* nonsense : {"port://0", "port://70000", "port://x", "http://8080"}) {
        expectEnd(desktop.start(QStringLiteral(ZENLOT_PROGRAM), {QString::fromLatin1(nonsense)}));
        expectMenu(kAlways()); // what was asked before this has been answered
        EXPECT_NE(desktop.input(u"search --onlyvisible --class ^zenlot$"_s.split(u' ')), 0)
            << nonsense;
    }
    expectEnd(desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"port://"_s + port}));
    EXPECT_TRUE(tree.find("list item", row));
    EXPECT_TRUE(alerts.shows(u"Port %1 is already in use"_s.arg(port)));
    EXPECT_EQ(zenlot->state(), QProcess::Running);
}

TEST_F(StatusAreaTest, SwitchesOfTheSettingsWorkAtOnce) {
    const QString icon = u"Show in the status area"_s;
    const QString dock = u"Show in the taskbar"_s;
    const QString notify = u"Notify on all port activity"_s;
    const QString monitoring = u"Port Monitoring"_s;
    const auto press = [this](const char* role, const QString& name) {
        EXPECT_TRUE(tree.pressOnce(role, name)) << name.toStdString();
    };
    const auto comesTo = [](const auto& condition) { return waitUntil(condition); };
    const auto hasItem = [&](bool isWanted) {
        return comesTo([&] { return (item = registeredItem()).isEmpty() != isWanted; });
    };
    const auto isInTaskbar = [&](bool isWanted) {
        return comesTo([&] {
            QProcess& state = desktop.start("xprop -name Settings _NET_WM_STATE");
            return state.waitForFinished() &&
                   state.readAllStandardOutput().contains("SKIP_TASKBAR") != isWanted;
        });
    };
    const auto openSettings = [&] {
        choose(u"Settings\u2026"_s);
        EXPECT_TRUE(tree.find("frame", u"Settings"_s, AccessibleTree::State::active));
    };
    const auto closeWindow = [&] {
        desktop.press("ctrl+w");
        EXPECT_TRUE(comesTo([this] {
            return desktop.input(u"search --onlyvisible --class ^zenlot$"_s.split(u' ')) != 0;
        }));
    };
    openSettings();
    press("check box", icon);
    EXPECT_TRUE(hasItem(false));
    press("check box", icon);
    EXPECT_TRUE(hasItem(true));
    EXPECT_TRUE(isInTaskbar(false));
    press("check box", dock);
    EXPECT_TRUE(isInTaskbar(true));
    press("check box", u"Enable global shortcut"_s);
    press("page tab", monitoring);
    press("check box", notify);
    EXPECT_TRUE(desktop.waitForLog("port activity monitor started"));
    press("page tab", u"Log"_s);
    EXPECT_TRUE(tree.find("list item", QDate::currentDate().toString(u"yyyy-"_s)));
    closeWindow();

    desktop.press("ctrl+alt+shift+p");
    EXPECT_TRUE(tree.find("frame", u"Zenlot"_s, AccessibleTree::State::active));
    // A list makes only the rows that fit, and the machine may have many listeners.
    desktop.start("xdotool search --sync --onlyvisible --name ^Zenlot$ windowsize 860 3900");
    EXPECT_TRUE(tree.find("list item", port + u' '));
    const QString later = PrivateDesktop::portOf(desktop.startServer(u"Later"_s));
    desktop.press("ctrl+r");
    EXPECT_TRUE(tree.find("list item", later + u' '));
    closeWindow();
    EXPECT_EQ(zenlot->state(), QProcess::Running);

    // Without anything to watch, and out of reach, it has nothing left to do.
    openSettings();
    press("check box", icon);
    press("page tab", monitoring);
    press("check box", notify);
    press("check box", u"Conflict Monitoring"_s);
    EXPECT_TRUE(tree.isChecked(u"Conflict Monitoring"_s, false));
    EXPECT_EQ(zenlot->state(), QProcess::Running);
    desktop.press("ctrl+w");
    expectEnd(*zenlot);
}

TEST_F(PanelTest, APanelThatIsLateAndSlowGetsTheIconAndNoWindowOpens) {
    constexpr int kLongerThanItWaits = 5000;
    QProcess& windows = desktop.start("xprop -root -spy _NET_CLIENT_LIST");
    const auto startAgain = [this] {
        expectEnd(desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s}));
    };
    startInBackground();
    ASSERT_TRUE(desktop.waitForLog("conflict listener started"));
    startAgain();
    QTest::qWait(kLongerThanItWaits);
    startAgain();

    // The panel takes its place, and says nothing for a while. Nobody else is asked meanwhile:
    // where it has said that it shows items, the toolkit waits for its next answer.
    desktop.start("xfce4-panel");
    uint panel = 0;
    ASSERT_TRUE(waitUntil([&] {
        const QDBusReply<uint> pid =
            bus.interface()->servicePid(u"org.kde.StatusNotifierWatcher"_s);
        panel = pid.isValid() ? pid.value() : 0;
        return panel != 0;
    }));
    kill(static_cast<pid_t>(panel), SIGSTOP);
    QTest::qWait(kLongerThanItWaits);
    kill(static_cast<pid_t>(panel), SIGCONT);
    ASSERT_TRUE(comesToItem());
    startAgain();

    // Of all windows that ever were there, the panel's alone.
    desktop.start(QStringLiteral(ZENLOT_PROGRAM), {});
    const auto classOf = [this](const QString& window) {
        QProcess& question = desktop.start(u"xprop"_s, {u"-id"_s, window, u"WM_CLASS"_s});
        question.waitForFinished();
        return QString::fromUtf8(question.readAllStandardOutput());
    };
    QStringList seen;
    const auto isOpen = [&] {
        const QString told = QString::fromUtf8(windows.readAllStandardOutput());
        static const QRegularExpression kNumber(u"0x[0-9a-f]+"_s);
        for (const QRegularExpressionMatch& match : kNumber.globalMatch(told)) {
            if (!seen.contains(match.captured()))
                seen.append(match.captured());
        }
        return !seen.isEmpty() && classOf(seen.last()).contains(u"zenlot"_s);
    };
    ASSERT_TRUE(waitUntil(isOpen));
    seen.removeLast();
    for (const QString& window : seen)
        EXPECT_TRUE(classOf(window).contains(u"xfce4-panel"_s)) << classOf(window).toStdString();
}

} // namespace
} // namespace zenlot
