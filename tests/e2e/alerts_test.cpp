// Conflicts and new listeners reach the user as alerts of a real notification server, and its
// buttons do what they say.
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

const QString kProgram = u"Sampled"_s;
const QString kHolder = u"R&D <b>web</b>"_s;

class AlertsTest : public testing::Test {
  protected:
    struct Server {
        QProcess* process;
        int port;
    };

    void startZenlot(const json& settings, const std::string& readyLine) {
        desktop.writeSettings(settings.dump());
        desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s});
        ASSERT_TRUE(desktop.waitForLog(readyLine));
        ASSERT_TRUE(desktop.waitForLog("notification setup granted=true"));
    }

    Server startServer() {
        QProcess& process = desktop.startServer(kProgram);
        return {&process, PrivateDesktop::portOf(process).toInt()};
    }

    void addConflict(const Server& server) {
        monitor.addConflict(server.port, server.process->processId(), kProgram, kHolder);
    }

    json settings() const { return json::parse(desktop.files().read(kSettings)); }

    // Looks at an alert as a user does, and answers it with a click.
    void answer(const QString& title, const QString& body, const QString& button) {
        ASSERT_EQ(alerts.answer(title, body, button), "") << desktop.log();
    }

    PrivateDesktop desktop;
    AlertScreen alerts{desktop};
    StandInMonitor monitor{desktop};
};

QString conflictTitle(int port) {
    return u"Port %1 is already in use"_s.arg(port);
}

QString conflictBody(int port, qint64 pid) {
    return u"%1 (PID %2) is blocking port %3 — kill it to free the port."_s.arg(kHolder)
        .arg(pid)
        .arg(port);
}

TEST_F(AlertsTest, ConflictIsAnnouncedOnceAndIgnoredFromThenOn) {
    ASSERT_NO_FATAL_FAILURE(startZenlot({{"conflictMonitoringEnabled", true},
                                         {"conflictIgnoredPorts", {1}},
                                         {"hasCompletedOnboarding", true}},
                                        "conflict listener started"));
    const Server polled = startServer();
    addConflict(polled);
    ASSERT_NO_FATAL_FAILURE(answer(conflictTitle(polled.port),
                                   conflictBody(polled.port, polled.process->processId()),
                                   u"Ignore Port"_s));
    EXPECT_TRUE(waitUntil([&] {
        return settings()["conflictIgnoredPorts"] == json({1, polled.port}) &&
               settings()["monitorIgnoredPorts"] == json({polled.port});
    })) << settings();

    const Server announced = startServer();
    addConflict(announced);
    monitor.broadcast("dev.quorvane.zenlot.conflictsUpdated");
    ASSERT_NO_FATAL_FAILURE(answer(conflictTitle(announced.port),
                                   conflictBody(announced.port, announced.process->processId()),
                                   u"Ignore Process"_s));
    EXPECT_TRUE(waitUntil([this] {
        const json names = {kHolder.toStdString()};
        return settings()["conflictIgnoredApps"] == names &&
               settings()["monitorIgnoredApps"] == names;
    })) << settings();
    EXPECT_EQ(desktop.countInLog("posting notification"), monitor.conflictCount()) << desktop.log();
}

TEST_F(AlertsTest, NewListenerIsAnnouncedAndKilled) {
    const Server earlier = startServer();
    ASSERT_NO_FATAL_FAILURE(
        startZenlot({{"portMonitoringEnabled", true}, {"hasCompletedOnboarding", true}},
                    "port activity monitor started"));
    // Nobody has asked for a window, also where there is no status area.
    EXPECT_NE(desktop.input(u"search --name ^Zenlot$"_s.split(u' ')), 0);
    // Until the first poll is over, servers count as earlier ones.
    Server server{};
    std::string numbers;
    bool isNoticed = false;
    for (int attempt = 0; attempt < 10 && !isNoticed; ++attempt) {
        server = startServer();
        numbers = " port=" + std::to_string(server.port) +
                  " pid=" + std::to_string(server.process->processId()) + " process=";
        isNoticed = desktop.waitForLog("detected" + numbers, 10000);
    }
    ASSERT_TRUE(isNoticed) << desktop.log();
    ASSERT_NO_FATAL_FAILURE(answer(u"Port %1 is now occupied"_s.arg(server.port),
                                   u"%1 (PID %2) started listening on port %3"_s.arg(kProgram)
                                       .arg(server.process->processId())
                                       .arg(server.port),
                                   u"Kill Process"_s));
    EXPECT_TRUE(PrivateDesktop::hasEnded(*server.process));
    EXPECT_EQ(server.process->exitStatus(), QProcess::CrashExit);
    EXPECT_EQ(server.process->exitCode(), SIGKILL);
    EXPECT_EQ(desktop.countInLog(numbers), 2U) << desktop.log(); // noticed and announced
    EXPECT_EQ(desktop.countInLog(" port=" + std::to_string(earlier.port) + ' '), 0U)
        << desktop.log();
}

} // namespace
} // namespace zenlot
