// The session bus comes back, and strangers speak on it: neither is a conflict.
#include "e2e/alert_screen.h"
#include "e2e/private_desktop.h"
#include "e2e/stand_in_monitor.h"

#include <gtest/gtest.h>

#include <optional>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

class ReturningBusTest : public testing::Test {
  protected:
    ~ReturningBusTest() override { end(bus); }

    // Always at the same address, as a user's session has it.
    QString startBus(const QProcessEnvironment& environment) {
        QString address = u"unix:path="_s + environment.value(u"XDG_RUNTIME_DIR"_s) + u"/bus"_s;
        const std::string configuration = writeSessionBusConfiguration(busFiles).string();
        bus.setProcessEnvironment(environment);
        bus.start(u"dbus-daemon"_s, {u"--nofork"_s, u"--nopidfile"_s, u"--print-address=1"_s,
                                     u"--address="_s + address,
                                     u"--config-file="_s + QString::fromStdString(configuration)});
        PrivateDesktop::firstLine(bus);
        return address; // without the identity of this one
    }
    void restartBus() {
        end(bus);
        bus.start();
        PrivateDesktop::firstLine(bus);
    }
    static void end(QProcess& process) {
        process.kill();
        process.waitForFinished();
    }

    TemporaryFolder busFiles;
    QProcess bus;
    std::optional<PrivateDesktop> desktop;
};

TEST_F(ReturningBusTest, OnlyARefusedServerIsAConflict) {
    desktop.emplace(
        [this](const QProcessEnvironment& environment) { return startBus(environment); });
    const std::string alert = "posting notification";
    constexpr int kWatchedPorts[]{8088, 8889};
    for (const int port : kWatchedPorts)
        desktop->startServer(u"Sampled"_s, QString::number(port));
    const QString port = PrivateDesktop::portOf(desktop->startServer(u"Sampled"_s));
    desktop->writeSettings(kWatching);
    std::optional<AlertScreen> alerts(*desktop);
    desktop->start(QStringLiteral(ZENLOT_MONITOR), {});
    ASSERT_TRUE(desktop->waitForLog("background monitor started"));
    desktop->start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s});
    ASSERT_TRUE(desktop->waitForLog("conflict listener started"));
    ASSERT_TRUE(desktop->waitForLog("notification setup granted=true"));

    {
        StandInMonitor stranger(*desktop);
        for (const int watched : kWatchedPorts)
            stranger.broadcast(("dev.quorvane.zenlot.conflict." + std::to_string(watched)).c_str());
    }
    alerts.reset();
    restartBus();
    alerts.emplace(*desktop);
    const QString connection = u"e2e returning bus"_s;
    const QDBusConnection returned =
        QDBusConnection::connectToBus(desktop->sessionBus(), connection);
    for (const char* name : {"dev.quorvane.zenlot", "dev.quorvane.zenlot.Monitor"})
        EXPECT_TRUE(waitUntil([&] {
            return returned.interface()->isServiceRegistered(QLatin1String(name)).value();
        }));
    QDBusConnection::disconnectFromBus(connection);

    EXPECT_TRUE(desktop->tryServers(port, alert)) << desktop->log();
    EXPECT_TRUE(alerts->shows(u"Port %1 is already in use"_s.arg(port)));
    EXPECT_EQ(desktop->countInLog(alert), 1U) << desktop->log();
    EXPECT_EQ(desktop->countInLog(alert + " id=zenlot-conflict-" + port.toStdString()), 1U)
        << desktop->log();
}

} // namespace
} // namespace zenlot
