// The first run and the settings on a desktop whose sessions are run by systemd: what the user
// allows there, the real service manager does.
#include "e2e/accessible_tree.h"
#include "e2e/alert_screen.h"
#include "e2e/private_desktop.h"
#include "e2e/stall_watch.h"
#include "e2e/stand_in_monitor.h"
#include "support/child_process.h"
#include "support/listener.h"
#include "support/private_user_manager.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <sys/resource.h>

#include <csignal>
#include <map>
#include <optional>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using nlohmann::json;
using State = AccessibleTree::State;

constexpr const char* kUnit = "dev.quorvane.zenlot.monitor.service";

const QString kWelcome = u"Welcome to Zenlot"_s;
const QString kSkip = u"Skip for now"_s;
const QString kEnable = u"Enable"_s;
const QString kConflicts = u"Conflict Monitoring"_s;
const QString kLoginItems = u"Login Items"_s;
const QString kRecheck = u"I've enabled it — re-check"_s;
const QString kBlocked =
    u"Zenlot is blocked from running in the background: systemd has its monitor masked. \"Open "
    "Login Items\" shows how to allow it; then click Re-check."_s;
const QString kStillBlocked =
    u"Zenlot is still blocked. \"Open Login Items\" shows the command that unmasks its monitor."_s;

const QString kContinue = u"Continue"_s; // on the first page; it has the keyboard

json storedSettings(const PrivateDesktop& desktop) {
    return json::parse(desktop.files().read(kSettings), nullptr, false);
}

void forgetSettings(const PrivateDesktop& desktop) {
    std::filesystem::remove_all(std::filesystem::path(desktop.folder() / kSettings).parent_path());
}

class UserManagerTest : public testing::Test {
  protected:
    UserManagerTest() {
        const std::filesystem::path units = desktop.folder() / "XDG_DATA_HOME/systemd/user";
        std::filesystem::create_directories(units);
        std::filesystem::copy(ZENLOT_MONITOR_UNIT, units);
    }

    void SetUp() override {
        if (!manager->isRunning())
            GTEST_SKIP() << "no systemd can be run here: " << manager->output();
        tree.emplace(desktop.sessionBus());
    }

    // The verb may bring options.
    std::string systemctl(const QString& verb) const {
        return manager->run(u"systemctl --user "_s + verb + u' ' + QLatin1String(kUnit));
    }
    std::string state() const {
        return systemctl(u"is-enabled"_s) + ' ' + systemctl(u"is-active"_s);
    }
    bool comesTo(const std::string& wanted) const {
        return waitUntil([&] { return state() == wanted; });
    }
    bool isStored(const char* key, bool value) const {
        return waitUntil([&] {
            const json settings = storedSettings(desktop);
            return settings.is_object() && settings.value(key, !value) == value;
        });
    }

    bool sees(const char* role, const QString& name, State state = State::visible) const {
        return tree->find(role, name, state).has_value();
    }
    // Whether the key brings the keyboard there.
    bool leadsTo(const char* key, const char* role, const QString& name) {
        desktop.press(key);
        return sees(role, name, State::focused);
    }

    void open() {
        zenlot = &desktop.start(QStringLiteral(ZENLOT_PROGRAM), {});
        ASSERT_TRUE(sees("frame", u"Zenlot"_s));
    }
    void openWelcome() {
        forgetSettings(desktop);
        open();
        ASSERT_TRUE(sees("frame", kWelcome, State::active));
        ASSERT_TRUE(sees("push button", kContinue, State::focused));
    }
    // The first tab of the settings; the keyboard is there.
    void openSettings() {
        open();
        ASSERT_TRUE(sees("text", u"Port"_s, State::focused));
        desktop.press("ctrl+comma");
        ASSERT_TRUE(sees("frame", u"Settings"_s, State::active));
        ASSERT_TRUE(sees("page tab", u"General"_s, State::focused));
    }
    // As the window for login items has it for a terminal.
    void runShownCommand() {
        const auto command = tree->find("text", u"systemctl "_s);
        ASSERT_TRUE(command);
        manager->run(command->name);
    }

    // By a key, to the window behind it.
    void leave(const QString& window, const QString& other) {
        desktop.press("Escape");
        // Its tree lives on, hidden.
        ASSERT_TRUE(waitUntil([&] {
            return desktop.input(u"search --onlyvisible --name"_s.split(u' ') +
                                 QStringList(u'^' + window + u'$')) != 0;
        }));
        // The window manager at times leaves the keyboard with nobody when a window closes.
        ASSERT_TRUE(waitUntil([&] {
            return desktop.input(
                       u"search --onlyvisible --name ^%1$ windowactivate windowfocus"_s.arg(other)
                           .split(u' ')) == 0 &&
                   tree->isActive(other);
        }));
    }

    std::optional<PrivateUserManager> manager;
    PrivateDesktop desktop{[this](const QProcessEnvironment& environment) {
        manager.emplace(environment);
        return manager->busAddress();
    }};
    std::optional<AccessibleTree> tree;
    QProcess* zenlot = nullptr;
};

TEST_F(UserManagerTest, SettingsAskForApprovalByKeyboard) {
    ASSERT_NO_FATAL_FAILURE(openSettings());
    EXPECT_TRUE(leadsTo("Right", "page tab", u"Port Monitoring"_s));
    EXPECT_TRUE(leadsTo("Tab", "check box", u"Notify on all port activity"_s));
    EXPECT_TRUE(leadsTo("Tab", "check box", kConflicts));
    EXPECT_TRUE(tree->isChecked(kConflicts, false));
    systemctl(u"mask"_s);
    desktop.press("space");
    ASSERT_TRUE(sees("frame", kLoginItems, State::active));
    EXPECT_TRUE(sees("text", kBlocked));
    EXPECT_TRUE(tree->isChecked(kConflicts, false));

    ASSERT_NO_FATAL_FAILURE(leave(kLoginItems, u"Settings"_s));
    EXPECT_TRUE(leadsTo("Tab", "text", kBlocked));
    EXPECT_TRUE(leadsTo("Tab", "push button", u"Open Login Items"_s));
    EXPECT_TRUE(leadsTo("Tab", "push button", kRecheck));
    desktop.press("Return");
    ASSERT_TRUE(sees("text", kStillBlocked));
    EXPECT_TRUE(tree->isChecked(kConflicts, false));

    EXPECT_TRUE(leadsTo("shift+Tab", "push button", u"Open Login Items"_s));
    desktop.press("Return");
    ASSERT_TRUE(sees("push button", u"Re-check"_s, State::focused));
    ASSERT_NO_FATAL_FAILURE(runShownCommand());
    desktop.press("Return");
    ASSERT_TRUE(sees("push button", u"Turn On"_s));
    EXPECT_TRUE(leadsTo("shift+Tab", "push button", u"Turn On"_s));
    desktop.press("Return");
    EXPECT_TRUE(comesTo("enabled active"));
    ASSERT_NO_FATAL_FAILURE(leave(kLoginItems, u"Settings"_s));
    EXPECT_TRUE(leadsTo("Tab", "push button", kRecheck));
    desktop.press("space");
    EXPECT_TRUE(tree->isChecked(kConflicts, true));
    EXPECT_TRUE(tree->isGone("push button", kRecheck));
    EXPECT_TRUE(isStored("conflictMonitoringEnabled", true));

    // Escape in the field of an exception list is for the field.
    EXPECT_TRUE(sees("check box", kConflicts, State::focused));
    EXPECT_TRUE(leadsTo("Tab", "list", u"Ignored ports"_s));
    EXPECT_TRUE(leadsTo("Tab", "push button", u"Add to Ignored ports"_s));
    desktop.press("space");
    EXPECT_TRUE(sees("text", u"Ignored ports"_s, State::focused));
    desktop.input({u"type"_s, u"81"_s});
    EXPECT_TRUE(leadsTo("Escape", "list", u"Ignored ports"_s));
    EXPECT_TRUE(sees("frame", u"Settings"_s, State::active));

    EXPECT_TRUE(leadsTo("shift+Tab", "check box", kConflicts));
    desktop.press("space");
    EXPECT_TRUE(comesTo("disabled inactive"));
    EXPECT_TRUE(tree->isChecked(kConflicts, false));
    EXPECT_TRUE(isStored("conflictMonitoringEnabled", false));
    desktop.press("Escape");
    EXPECT_TRUE(tree->isGone("frame", u"Settings"_s));
}

TEST_F(UserManagerTest, FirstRunEnablesTheMonitorByKeyboard) {
    ASSERT_NO_FATAL_FAILURE(openWelcome());
    desktop.press("Return");
    ASSERT_TRUE(sees("push button", kEnable, State::focused));
    EXPECT_TRUE(leadsTo("Tab", "push button", kSkip));
    EXPECT_TRUE(leadsTo("shift+Tab", "push button", kEnable));
    desktop.press("Return");
    EXPECT_TRUE(tree->isGone("frame", kWelcome));
    EXPECT_TRUE(comesTo("enabled active"));
    EXPECT_TRUE(isStored("hasCompletedOnboarding", true));
    EXPECT_TRUE(isStored("conflictMonitoringEnabled", true));
}

TEST_F(UserManagerTest, FirstRunAsksForApproval) {
    systemctl(u"mask"_s);
    ASSERT_NO_FATAL_FAILURE(openWelcome());
    ASSERT_TRUE(tree->press("push button", kContinue, "push button", kEnable));
    ASSERT_TRUE(tree->press("push button", kEnable, "push button", kRecheck));
    ASSERT_TRUE(sees("frame", kLoginItems, State::active));
    EXPECT_TRUE(sees("text", kBlocked));
    EXPECT_TRUE(sees("push button", u"Open Login Items"_s));
    EXPECT_TRUE(sees("push button", kSkip));
    ASSERT_TRUE(tree->press("push button", kRecheck, "text", kStillBlocked));

    ASSERT_NO_FATAL_FAILURE(runShownCommand());
    ASSERT_TRUE(tree->press("push button", u"Re-check"_s, "push button", u"Turn On"_s));
    ASSERT_TRUE(tree->pressOnce("push button", u"Turn On"_s));
    EXPECT_TRUE(comesTo("enabled active"));
    ASSERT_TRUE(tree->pressOnce("push button", kRecheck));
    EXPECT_TRUE(tree->isGone("frame", kWelcome));
    EXPECT_TRUE(isStored("hasCompletedOnboarding", true));
}

// A start registers the monitor anew, which takes half a second.
TEST_F(UserManagerTest, WhoQuitsAtOnceKeepsTheMonitor) {
    systemctl(u"--now enable"_s);
    desktop.writeSettings(kWatching);
    zenlot = &desktop.start(QStringLiteral(ZENLOT_PROGRAM), {});
    ASSERT_TRUE(desktop.waitForLog("notification setup"));
    zenlot->terminate();
    ASSERT_TRUE(zenlot->waitForFinished());
    EXPECT_TRUE(comesTo("enabled active"));
}

// Stopped, started anew and killed: who asks it waits, no window does, and so does no end.
TEST_F(UserManagerTest, WindowsAnswerWhateverBecomesOfTheManager) {
    ASSERT_NO_FATAL_FAILURE(openSettings());
    ASSERT_TRUE(tree->pressOnce("page tab", u"Port Monitoring"_s));
    StallWatch watch(desktop.sessionBus(), zenlot->processId());
    const pid_t process = manager->processId();
    ::kill(process, SIGSTOP);
    ASSERT_TRUE(tree->pressOnce("check box", kConflicts));
    QTest::qWait(1000); // part of the five seconds that it has for an answer
    ::kill(process, SIGCONT);
    EXPECT_TRUE(comesTo("enabled active"));
    EXPECT_TRUE(tree->isChecked(kConflicts, true));

    ASSERT_TRUE(manager->startAnew()) << manager->output();
    ASSERT_TRUE(tree->pressOnce("check box", kConflicts));
    EXPECT_TRUE(comesTo("disabled inactive"));
    EXPECT_TRUE(tree->isChecked(kConflicts, false));

    // Who is left has to end the bus.
    const uint bus = manager->bus().interface()->servicePid(u"org.freedesktop.DBus"_s);
    ::kill(process, SIGKILL);
    ASSERT_TRUE(tree->pressOnce("check box", kConflicts));
    EXPECT_TRUE(tree->isChecked(kConflicts, true)) << "without one it is a child of the program";
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return desktop.countInLog("background monitor started") == 2; }, kPatience));
    EXPECT_LE(watch.longest(), StallWatch::kBound);
    zenlot->terminate();
    EXPECT_TRUE(zenlot->waitForFinished(kPatience));
    EXPECT_EQ(zenlot->exitCode(), 0);
    ::kill(static_cast<pid_t>(bus), SIGTERM);
}

// A crash by the unit's limit of memory, which is drawn tighter here while it runs: it is started
// again, publishes, and knows what it has told.
TEST_F(UserManagerTest, TheMonitorComesBackFromItsLimitOfMemory) {
    StandInMonitor(desktop).addConflict(3000, ::getpid(), u"holder"_s, u"holder"_s);
    systemctl(u"--now enable"_s);
    const auto process = [this] {
        return std::stoi(systemctl(u"show --value --property=MainPID"_s));
    };
    const auto published = [this] {
        return desktop.files().read("XDG_STATE_HOME/group.dev.quorvane.zenlot/ports.json");
    };
    ASSERT_TRUE(desktop.waitForLog("background monitor started"));
    const std::string conflicts =
        desktop.files().read("XDG_STATE_HOME/group.dev.quorvane.zenlot/conflicts.json");
    const pid_t first = process();
    const rlimit nothingMore{0, RLIM_INFINITY};
    ASSERT_EQ(::prlimit(first, RLIMIT_AS, &nothingMore, nullptr), 0);
    QProcess& server = desktop.startServer(u"Sampled"_s);
    const std::string port = PrivateDesktop::portOf(server).toStdString();
    // Nothing is the matter as long as it needs no more.
    const ChildProcess many([] { return listenOften(3'000); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return process() != first; }, kPatience))
        << systemctl(u"status"_s);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return published().find("{\"port\":" + port + ",") != std::string::npos; },
        kPatience));
    EXPECT_EQ(desktop.files().read("XDG_STATE_HOME/group.dev.quorvane.zenlot/conflicts.json"),
              conflicts);
}

// What it published last is nobody's word any more: window, automation and terminal say what the
// kernel says.
TEST_F(UserManagerTest, NothingIsBelievedOfAMonitorThatWasSwitchedOff) {
    systemctl(u"--now enable"_s);
    desktop.files().write(
        kSettings,
        json({{"conflictMonitoringEnabled", true}, {"hasCompletedOnboarding", true}}).dump());
    QProcess& server = desktop.startServer(u"Sampled"_s);
    const QString port = PrivateDesktop::portOf(server);
    const auto published = [this] {
        return desktop.files().read("XDG_STATE_HOME/group.dev.quorvane.zenlot/ports.json");
    };
    const auto saysFree = [&](const char* program, const QString& words) {
        return manager->run(QLatin1String(program) + words.arg(port))
                   .find("Port " + port.toStdString() + " is free") != std::string::npos;
    };
    const auto terminalSaysFree = [&] { return saysFree(ZENLOTCTL, u" check %1"_s); };
    const auto automationSaysFree = [&] {
        return saysFree("busctl --user call dev.quorvane.zenlot.Automation "
                        "/dev/quorvane/zenlot/Automation dev.quorvane.zenlot.Automation",
                        u" CheckPort x %1"_s);
    };
    ASSERT_TRUE(QTest::qWaitFor(
        [&] { return published().find(port.toStdString()) != std::string::npos; }, kPatience));
    desktop.start(QStringLiteral(ZENLOT_AUTOMATION_PROGRAM), {});
    EXPECT_FALSE(terminalSaysFree() || automationSaysFree());

    ASSERT_NO_FATAL_FAILURE(openSettings());
    ASSERT_TRUE(tree->pressOnce("page tab", u"Port Monitoring"_s));
    ASSERT_TRUE(tree->isChecked(kConflicts, true));
    ASSERT_TRUE(tree->pressOnce("check box", kConflicts));
    ASSERT_TRUE(comesTo("disabled inactive"));
    EXPECT_EQ(published(), "[]");
    server.kill();
    ASSERT_TRUE(server.waitForFinished());
    EXPECT_TRUE(terminalSaysFree());
    EXPECT_TRUE(QTest::qWaitFor(automationSaysFree, kPatience));
    ASSERT_NO_FATAL_FAILURE(leave(u"Settings"_s, u"Zenlot"_s));
    ASSERT_TRUE(sees("text", u"Port"_s, State::focused));
    desktop.input({u"type"_s, port});
    EXPECT_TRUE(sees("label", u"Port %1 is free"_s.arg(port)));
    EXPECT_TRUE(tree->isGone("list item", port + u' '));
}

TEST_F(UserManagerTest, TheDoctorSaysWhatTheSessionHas) {
    const auto says = [this](const std::string& line) {
        return waitUntil([&] {
            return manager->run(QLatin1String(ZENLOTCTL) + u" doctor"_s).find(line) !=
                   std::string::npos;
        });
    };
    EXPECT_TRUE(says("service manager  works    process " + std::to_string(manager->processId())));
    EXPECT_TRUE(says("monitor unit     limited  disabled, inactive"));
    EXPECT_TRUE(says("notifications    missing  "));
    systemctl(u"--now enable"_s);
    const AlertScreen alerts(desktop);
    EXPECT_TRUE(says("monitor unit     works    enabled, active"));
    EXPECT_TRUE(says("published list   works    "));
    EXPECT_TRUE(says("notifications    works    "));
}

// With its socket for a service, the manager holds a port. To end it would end the session.
TEST_F(UserManagerTest, TheManagerItselfIsOfferedNowhere) {
    QString port;
    {
        const Listener free;
        port = QString::number(free.port());
    }
    manager->writeUnit("held.socket",
                       "[Socket]\nListenStream=127.0.0.1:" + port.toStdString() + '\n');
    manager->writeUnit("held.service", "[Service]\nExecStart=/bin/true\n");
    ASSERT_EQ(manager->run(u"systemctl --user start held.socket && echo held"_s), "held");
    desktop.writeSettings(kWatching);
    const AlertScreen alerts(desktop);
    ASSERT_NO_FATAL_FAILURE(open());
    ASSERT_TRUE(sees("text", u"Port"_s, State::focused));
    desktop.input({u"type"_s, port});
    ASSERT_TRUE(sees("list item", u"Systemd TCP4 LISTEN PID %1"_s.arg(manager->processId())));
    desktop.press("Delete"); // which nothing comes of but the reason
    EXPECT_TRUE(sees("label", u"The manager of your services holds it for one of them."_s));
    ASSERT_TRUE(tree->pressOnce("push button", u"Force Quit"_s));

    StandInMonitor monitor(desktop);
    monitor.addConflict(port.toInt(), manager->processId(), u"systemd"_s, u"Systemd"_s);
    monitor.broadcast("dev.quorvane.zenlot.conflictsUpdated");
    const QString title = u"Port %1 is already in use"_s.arg(port);
    ASSERT_TRUE(alerts.offers(title, u"Ignore Port"_s));
    EXPECT_FALSE(alerts.offers(title, u"Kill Process"_s));
    EXPECT_FALSE(tree->isThere("label", u"Force Quit Process?"_s)); // the key was long ago
    EXPECT_EQ(manager->run(u"systemctl --user is-active held.socket"_s), "active");
}

// ---- What is left behind ----

// When every file of the user's folders was changed, but for those of the desktop itself: the
// window manager's, and a cache that the library for fonts makes where the system has none.
std::map<std::string, std::filesystem::file_time_type> userFiles(const PrivateDesktop& desktop) {
    std::map<std::string, std::filesystem::file_time_type> files;
    for (const char* folder :
         {"HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"}) {
        for (const auto& entry :
             std::filesystem::recursive_directory_iterator(desktop.folder() / folder)) {
            const std::string name =
                std::filesystem::relative(entry.path(), desktop.folder()).string();
            if (entry.is_regular_file() && !name.starts_with("XDG_CACHE_HOME/openbox/") &&
                !name.starts_with("XDG_CACHE_HOME/fontconfig/"))
                files[name] = entry.last_write_time();
        }
    }
    return files;
}

TEST(FirstStartTest, WritesWhatItMustAndTheNextOneNothing) {
    PrivateDesktop desktop;
    forgetSettings(desktop);
    ASSERT_TRUE(userFiles(desktop).empty());
    const AccessibleTree tree(desktop.sessionBus());
    std::size_t starts = 0;
    // Until it has shown its window and has done what a start does. Each is told with two lines.
    const auto startAndEnd = [&](const QString& window, const QString& pressed) {
        QProcess& zenlot = desktop.start(QStringLiteral(ZENLOT_PROGRAM), {});
        EXPECT_TRUE(tree.find("frame", window, State::active));
        EXPECT_TRUE(
            waitUntil([&] { return desktop.countInLog(" notification setup ") == starts + 1; }));
        if (!pressed.isEmpty()) {
            EXPECT_TRUE(tree.press("push button", kContinue, "push button", pressed));
            EXPECT_TRUE(tree.pressOnce("push button", pressed));
            EXPECT_TRUE(tree.isGone("frame", window));
        }
        zenlot.terminate();
        EXPECT_TRUE(zenlot.waitForFinished());
        EXPECT_EQ(zenlot.exitCode(), 0) << zenlot.readAllStandardError().toStdString();
        EXPECT_EQ(desktop.countInLog("\n"), 2 * ++starts) << desktop.log();
    };
    // The log, and nothing else.
    startAndEnd(kWelcome, {});
    EXPECT_THAT(userFiles(desktop), testing::ElementsAre(testing::Pair(kLog, testing::_)));
    // And the answer to the welcome.
    startAndEnd(kWelcome, kSkip);
    auto before = userFiles(desktop);
    EXPECT_EQ(before.size(), 2U);
    EXPECT_EQ(storedSettings(desktop), json({{"hasCompletedOnboarding", true}}));
    startAndEnd(u"Zenlot"_s, {});
    auto after = userFiles(desktop);
    before.erase(kLog);
    after.erase(kLog);
    EXPECT_TRUE(after == before) << "something was written again";
}

} // namespace
} // namespace zenlot
