// A server can't have its port; an alert says who holds it, its button ends the holder, and the
// server starts.
#include "e2e/alert_screen.h"
#include "e2e/private_desktop.h"

#include <gmock/gmock.h>

#include <csignal>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int kWatchedPort = 8088;
const QString kHolderName = u"R&D <b>web"_s;

// With and without process events of the kernel.
class ConflictTest : public testing::TestWithParam<QStringList> {
  protected:
    void startMonitorAndZenlot() {
        desktop.start(QStringLiteral(ZENLOT_MONITOR), GetParam());
        ASSERT_TRUE(desktop.waitForLog("background monitor started"));
        if (GetParam().isEmpty() &&
            desktop.log().find("told of processes by the kernel") == std::string::npos)
            GTEST_SKIP() << "the kernel does not tell of processes here";
        desktop.writeSettings(kWatching);
        desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s});
        ASSERT_TRUE(desktop.waitForLog("conflict listener started"));
        ASSERT_TRUE(desktop.waitForLog("notification setup granted=true"));
    }

    static std::string announcementOf(const QString& port) {
        return "[zenlot-daemon] broadcasting port " + port.toStdString() + ",";
    }

    PrivateDesktop desktop;
    AlertScreen alerts{desktop};
};

TEST_P(ConflictTest, AlertNamesTheHolderAndItsButtonFreesThePort) {
    QProcess& holder = desktop.startServer(kHolderName);
    const QString port = PrivateDesktop::portOf(holder);
    ASSERT_NO_FATAL_FAILURE(startMonitorAndZenlot());
    if (IsSkipped())
        return;
    ASSERT_TRUE(desktop.tryServers(port, announcementOf(port)));
    ASSERT_EQ(alerts.answer(
                  u"Port %1 is already in use"_s.arg(port),
                  u"%1 (PID %2) is blocking port %3 — kill it to free the port."_s.arg(kHolderName)
                      .arg(holder.processId())
                      .arg(port),
                  u"Kill Process"_s),
              "")
        << desktop.log();
    EXPECT_TRUE(PrivateDesktop::hasEnded(holder));
    EXPECT_EQ(holder.exitCode(), SIGKILL);
    EXPECT_THAT(PrivateDesktop::firstLine(desktop.startServer(kHolderName, port)).toStdString(),
                StartsWith("Serving HTTP"));
    EXPECT_THAT(desktop.log(), HasSubstr(announcementOf(port)));
}

// The monitor tells each conflict in a file, by signals and in its log; for the ports that are
// watched by one more signal.
TEST_P(ConflictTest, OneRefusedServerIsOneAlert) {
    const QString anyPort = PrivateDesktop::portOf(desktop.startServer(kHolderName));
    desktop.startServer(kHolderName, QString::number(kWatchedPort));
    ASSERT_NO_FATAL_FAILURE(startMonitorAndZenlot());
    if (IsSkipped())
        return;
    for (const QString& port : {anyPort, QString::number(kWatchedPort)}) {
        ASSERT_TRUE(desktop.tryServers(port, announcementOf(port)));
        const std::string alert = "posting notification id=zenlot-conflict-" + port.toStdString();
        EXPECT_TRUE(desktop.waitForLog(alert)) << desktop.log();
        // Two polls of everything that may tell of the conflict once more.
        QTest::qWait(5000);
        EXPECT_EQ(desktop.countInLog(alert), desktop.countInLog(announcementOf(port)))
            << desktop.log();
        EXPECT_TRUE(!GetParam().isEmpty() || desktop.countInLog(alert) == 1U) << desktop.log();
    }
}

INSTANTIATE_TEST_SUITE_P(Noticing, ConflictTest,
                         testing::Values(QStringList(), QStringList(u"--poll"_s)),
                         [](const auto& mode) {
                             return mode.param.isEmpty() ? "AsTheKernelTells" : "ByPolling";
                         });

// Nobody has started a monitor, and no service manager runs here.
TEST(OwnMonitorTest, RunsAndTellsAsLongAsTheApplicationDoes) {
    PrivateDesktop desktop;
    const AlertScreen alerts(desktop);
    const QString port = PrivateDesktop::portOf(desktop.startServer(kHolderName));
    desktop.writeSettings(kWatching);
    QProcess& zenlot = desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s});
    ASSERT_TRUE(desktop.waitForLog("background monitor started"));
    ASSERT_TRUE(desktop.waitForLog("notification setup granted=true"));
    const std::string alert = "posting notification id=zenlot-conflict-" + port.toStdString();
    EXPECT_TRUE(desktop.tryServers(port, alert)) << desktop.log();
    zenlot.terminate();
    EXPECT_TRUE(zenlot.waitForFinished());
    EXPECT_TRUE(desktop.waitForLog("background monitor stopped"));
}

} // namespace
} // namespace zenlot
