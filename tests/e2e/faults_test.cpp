// What breaks around the programs, and what they do then: each test stands for a line of
// docs/reliability.md.
#include "e2e/alert_screen.h"
#include "e2e/private_desktop.h"
#include "e2e/stand_in_monitor.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <csignal>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using nlohmann::json;

class FaultsTest : public testing::Test {
  protected:
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

    PrivateDesktop desktop;
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

} // namespace
} // namespace zenlot
