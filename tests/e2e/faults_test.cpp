// What breaks around the programs, and what they do then: each test stands for a line of
// docs/reliability.md.
#include "e2e/accessible_tree.h"
#include "e2e/alert_screen.h"
#include "e2e/private_desktop.h"
#include "e2e/stand_in_monitor.h"

#include <QDBusConnectionInterface>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using nlohmann::json;

class FaultsTest : public testing::Test {
  protected:
    ~FaultsTest() override { QDBusConnection::disconnectFromBus(bus.name()); }

    // In the background it has a status item and alerts, and no window.
    QProcess& startZenlot(const json& settings) {
        desktop.writeSettings(settings.dump());
        return desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s});
    }

    // Ends a program as the session does: the status that it leaves.
    static std::string ended(QProcess& program) {
        program.terminate();
        if (program.state() != QProcess::NotRunning && !program.waitForFinished(kPatience))
            return "still running";
        if (program.exitStatus() == QProcess::CrashExit)
            return "signal " + std::to_string(program.exitCode());
        return std::to_string(program.exitCode());
    }

    static qint64 readBytes(const QProcess& program) {
        QFile counters(u"/proc/%1/io"_s.arg(program.processId()));
        return counters.open(QIODevice::ReadOnly)
                   ? counters.readLine().mid(sizeof("rchar:")).trimmed().toLongLong()
                   : 0;
    }

    bool owns(const QString& name, const QProcess& program) const {
        return bus.interface()->servicePid(name) == program.processId();
    }

    PrivateDesktop desktop;
    QDBusConnection bus = QDBusConnection::connectToBus(desktop.sessionBus(), u"e2e faults"_s);
};

// A signal may come before the program has begun to listen for it: then it ends as every program.
TEST_F(FaultsTest, ProgramsEndWheneverTheyAreAsked) {
    const json settings{{"conflictMonitoringEnabled", true}, {"hasCompletedOnboarding", true}};
    for (const QString& program :
         {QStringLiteral(ZENLOT_PROGRAM), QStringLiteral(ZENLOT_MONITOR)}) {
        for (int milliseconds = 0; milliseconds < 400; milliseconds += milliseconds / 4 + 4) {
            desktop.writeSettings(settings.dump());
            QProcess& running = desktop.start(program, {});
            QTest::qWait(milliseconds);
            const std::string end = ended(running);
            EXPECT_TRUE(end == "0" || end == "signal " + std::to_string(SIGTERM))
                << program.toStdString() << " after " << milliseconds << " ms: " << end;
        }
    }
}

// Nobody waits for a worker: this one would read for minutes.
TEST_F(FaultsTest, EndsWhileALogOfManyGigabytesIsRead) {
    desktop.files().write(kLog, "first line\n");
    QProcess& zenlot =
        startZenlot({{"conflictMonitoringEnabled", true}, {"hasCompletedOnboarding", true}});
    ASSERT_TRUE(desktop.waitForLog("conflict listener started"));
    const std::filesystem::path log = desktop.folder() / kLog;
    QTest::qWait(2500); // until the end of the log was marked
    std::filesystem::resize_file(log, std::uintmax_t{1} << 40U);
    ASSERT_TRUE(QTest::qWaitFor([&] { return readBytes(zenlot) > qint64{100} << 20U; }, kPatience));
    EXPECT_EQ(ended(zenlot), "0");
    std::filesystem::resize_file(log, 0);
}

// A thousand conflicts at once are twenty alerts, and one for all others.
TEST_F(FaultsTest, AFloodOfConflictsIsSummedUp) {
    AlertScreen alerts(desktop);
    StandInMonitor monitor(desktop);
    startZenlot({{"conflictMonitoringEnabled", true}, {"hasCompletedOnboarding", true}});
    ASSERT_TRUE(desktop.waitForLog("notification setup granted=true"));
    std::vector<StandInMonitor::Conflict> conflicts;
    for (int port = 10'000; port < 11'000; ++port)
        conflicts.push_back({port, ::getpid(), u"flood"_s, u"flood"_s});
    monitor.addConflicts(conflicts);
    EXPECT_TRUE(alerts.shows(u"… and 980 more"_s)) << desktop.log();
    EXPECT_EQ(desktop.countInLog("posting notification id=zenlot-conflict-1"), 20U);
}

// Nothing shows alerts yet, and then something does.
TEST_F(FaultsTest, AnAlertWaitsForANotificationServer) {
    StandInMonitor monitor(desktop);
    const QProcess& zenlot =
        startZenlot({{"conflictMonitoringEnabled", true}, {"hasCompletedOnboarding", true}});
    ASSERT_TRUE(desktop.waitForLog("notification setup"));
    QProcess& server = desktop.startServer(u"holder"_s);
    const int port = PrivateDesktop::portOf(server).toInt();
    monitor.addConflict(port, server.processId(), u"holder"_s, u"holder"_s);
    ASSERT_TRUE(desktop.waitForLog("notification add failed")) << desktop.log();
    AlertScreen alerts(desktop);
    EXPECT_TRUE(alerts.shows(u"Port %1 is already in use"_s.arg(port))) << desktop.log();
    EXPECT_EQ(zenlot.state(), QProcess::Running);
}

// Of each file that the programs read or write, something else stands in its place: they come up,
// and end when they are asked.
TEST_F(FaultsTest, ProgramsRunWhateverStandsInTheirFilesPlaces) {
    const std::string container = "XDG_STATE_HOME/group.dev.quorvane.zenlot";
    const std::vector<std::string> places{kLog,
                                          kSettings,
                                          "XDG_CONFIG_HOME/autostart/dev.quorvane.zenlot.desktop",
                                          container + "/ports.json",
                                          container + "/conflicts.json",
                                          container + "/.monitor.lock",
                                          container,
                                          "XDG_STATE_HOME",
                                          "XDG_CONFIG_HOME/dev.quorvane.zenlot",
                                          "HOME/Library/Logs"};
    const std::vector<std::function<void(const std::filesystem::path&)>> kinds{
        [](const auto& path) { ::mkfifo(path.c_str(), 0600); },
        [](const auto& path) { std::filesystem::create_directory(path); },
        [](const auto& path) { std::filesystem::create_symlink("/dev/zero", path); },
        [](const auto& path) { std::filesystem::create_symlink(path.filename(), path); },
        [](const auto& path) {
            std::ofstream(path) << '[';
            std::filesystem::resize_file(path, 100 << 20);
        },
        [](const auto& path) { std::ofstream(path) << R"([{"port": 3000, "pid)"; }};
    for (const std::string& place : places) {
        for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
            const std::filesystem::path path = desktop.folder() / place;
            std::filesystem::create_directories(path.parent_path());
            std::filesystem::remove_all(path);
            kinds[kind](path);
            QProcess& monitor = desktop.start(QStringLiteral(ZENLOT_MONITOR), {});
            QProcess& zenlot = desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s});
            // Without a container that is its own the monitor does not run.
            EXPECT_TRUE(QTest::qWaitFor(
                [&] {
                    return owns(u"dev.quorvane.zenlot"_s, zenlot) &&
                           (owns(u"dev.quorvane.zenlot.Monitor"_s, monitor) ||
                            monitor.state() == QProcess::NotRunning);
                },
                kPatience))
                << place << ' ' << kind;
            EXPECT_EQ(ended(zenlot), "0") << place << ' ' << kind;
            EXPECT_THAT(ended(monitor), testing::AnyOf("0", "1")) << place << ' ' << kind;
            std::filesystem::remove_all(path);
        }
    }
}

// It has its name and takes what it is sent, and never says a word.
TEST_F(FaultsTest, ANotificationServerThatNeverAnswersHoldsNothingUp) {
    AlertScreen alerts(desktop);
    StandInMonitor monitor(desktop);
    QProcess& zenlot =
        startZenlot({{"conflictMonitoringEnabled", true}, {"hasCompletedOnboarding", true}});
    ASSERT_TRUE(desktop.waitForLog("notification setup granted=true"));
    ::kill(alerts.serverPid(), SIGSTOP);
    monitor.addConflict(3000, ::getpid(), u"holder"_s, u"holder"_s);
    EXPECT_TRUE(desktop.waitForLog("did not answer")) << desktop.log();
    monitor.addConflict(3001, ::getpid(), u"holder"_s, u"holder"_s);
    EXPECT_TRUE(desktop.waitForLog("port=3001 ")) << desktop.log();
    ::kill(alerts.serverPid(), SIGCONT);
    EXPECT_TRUE(alerts.shows(u"Port 3001 is already in use"_s)) << desktop.log();
    EXPECT_EQ(ended(zenlot), "0");
}

// Whatever becomes of the bus and of who shows alerts: killed or stopped, they keep nobody.
TEST_F(FaultsTest, EndsWhateverBecomesOfTheServicesOfTheDesktop) {
    for (const int signal : {SIGSTOP, SIGKILL}) {
        for (const bool isBus : {false, true}) {
            SCOPED_TRACE(std::to_string(signal) + (isBus ? " for the bus" : " for alerts"));
            PrivateDesktop other;
            const AlertScreen alerts(other);
            other.writeSettings(
                R"({"conflictMonitoringEnabled": true, "hasCompletedOnboarding": true})");
            QProcess& monitor = other.start(QStringLiteral(ZENLOT_MONITOR), {});
            QProcess& zenlot = other.start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s});
            ASSERT_TRUE(other.waitForLog("notification setup granted=true"));
            ASSERT_TRUE(other.waitForLog("background monitor started"));
            const pid_t struck = isBus ? alerts.busPid() : alerts.serverPid();
            ::kill(struck, signal);
            QTest::qWait(2500); // polls come every two seconds
            EXPECT_EQ(ended(zenlot), "0");
            EXPECT_EQ(ended(monitor), "0");
            ::kill(struck, SIGCONT);
        }
    }
}

// With fewer the library of the event loop ends them at once.
TEST_F(FaultsTest, AFewDescriptorsAreNoReasonToCrash) {
    const std::pair<const char*, rlim_t> cases[] = {{ZENLOT_MONITOR, 24},
                                                    {ZENLOT_MONITOR, 32},
                                                    {ZENLOT_PROGRAM, 32},
                                                    {ZENLOT_PROGRAM, 48},
                                                    {ZENLOT_PROGRAM, 64}};
    for (const auto& [program, most] : cases) {
        QProcess& running = desktop.start(QLatin1String(program), {}, [most = most] {
            const rlimit limit{most, most};
            ::setrlimit(RLIMIT_NOFILE, &limit);
        });
        QTest::qWait(1500);
        EXPECT_THAT(ended(running), testing::AnyOf("0", "1"))
            << program << " with " << most << ": " << running.readAllStandardError().toStdString();
    }
}

// A start writes nothing new there, so somebody has to change something.
TEST_F(FaultsTest, SettingsThatCannotBeWrittenAreTriedAgain) {
    const std::filesystem::path folder = (desktop.folder() / kSettings).parent_path();
    desktop.writeSettings(R"({"hasCompletedOnboarding": true})");
    const QProcess& zenlot = desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--settings"_s});
    AccessibleTree tree(desktop.sessionBus());
    ASSERT_TRUE(tree.find("frame", u"Settings"_s, AccessibleTree::State::active));
    std::filesystem::rename(folder, desktop.folder() / "elsewhere");
    desktop.files().write("XDG_CONFIG_HOME/dev.quorvane.zenlot", "no folder");
    ASSERT_TRUE(tree.pressOnce("check box", u"Show in the taskbar"_s));
    EXPECT_TRUE(tree.find("label", u"Your settings can't be saved"_s)) << "no notice";
    std::filesystem::remove(folder);
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return desktop.files().read(kSettings).find("showInDock") != std::string::npos; },
        kPatience));
    EXPECT_TRUE(tree.isGone("label", u"Your settings can't be saved"_s));
    EXPECT_EQ(zenlot.state(), QProcess::Running);
}

TEST_F(FaultsTest, ADamagedSettingsFileIsNoFirstStart) {
    const std::string damaged = R"({"hasCompletedOnboarding": true, "conflictIgnoredPorts": [30)";
    desktop.writeSettings(damaged);
    desktop.start(QStringLiteral(ZENLOT_PROGRAM), {});
    const AccessibleTree tree(desktop.sessionBus());
    ASSERT_TRUE(tree.find("text", u"Port"_s, AccessibleTree::State::focused)) << "a welcome?";
    EXPECT_TRUE(tree.find("label", u"The file with your settings was damaged"_s));
    EXPECT_EQ(desktop.files().read(std::string(kSettings) + ".damaged"), damaged);
    EXPECT_EQ(json::parse(desktop.files().read(kSettings)),
              json({{"hasCompletedOnboarding", true}}));
}

} // namespace
} // namespace zenlot
