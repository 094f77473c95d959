// Much of everything, for minutes: not among the suites that each change is tried with, but run by
//
//     ctest --preset ci -C long -R endurance
#include "e2e/private_desktop.h"
#include "e2e/stall_watch.h"
#include "e2e/stand_in_monitor.h"
#include "support/child_process.h"

#include <QDBusConnectionInterface>
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>

#include <csignal>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using nlohmann::json;

constexpr char kPorts[] = "XDG_STATE_HOME/group.dev.quorvane.zenlot/ports.json";
constexpr char kMonitors[] = R"({"conflictMonitoringEnabled": true, "hasCompletedOnboarding": true,
                                 "portMonitoringEnabled": true})";

// In the new process.
bool listenOften(int count) {
    const rlimit limit{static_cast<rlim_t>(count) + 100, static_cast<rlim_t>(count) + 100};
    if (::setrlimit(RLIMIT_NOFILE, &limit) != 0)
        return false;
    for (int made = 0; made < count; ++made) {
        const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
            ::listen(listener, 1) != 0)
            return false;
    }
    return true;
}

class EnduranceTest : public testing::Test {
  protected:
    ~EnduranceTest() override { QDBusConnection::disconnectFromBus(bus.name()); }

    // Both programs, when they have done what a start does.
    void start() {
        desktop.writeSettings(kMonitors);
        monitor = &desktop.start(QStringLiteral(ZENLOT_MONITOR), {});
        ASSERT_TRUE(desktop.waitForLog("background monitor started"));
        zenlot = &desktop.start(QStringLiteral(ZENLOT_PROGRAM), {u"--background"_s});
        ASSERT_TRUE(desktop.waitForLog("port activity monitor started"));
        watch.emplace(desktop.sessionBus(), zenlot->processId());
    }

    std::size_t publishedPorts() const {
        const json ports = json::parse(desktop.files().read(kPorts), nullptr, false);
        return ports.is_array() ? ports.size() : 0;
    }

    void expectAllIsWell() {
        EXPECT_GT(watch->answers(), 0);
        EXPECT_LE(watch->longest(), StallWatch::kBound);
        for (QProcess* program : {zenlot, monitor}) {
            EXPECT_EQ(program->state(), QProcess::Running);
            program->terminate();
            EXPECT_TRUE(program->waitForFinished(kPatience));
            EXPECT_EQ(program->exitCode(), 0);
        }
    }

    PrivateDesktop desktop;
    QDBusConnection bus = QDBusConnection::connectToBus(desktop.sessionBus(), u"e2e endurance"_s);
    QProcess* monitor = nullptr;
    QProcess* zenlot = nullptr;
    std::optional<StallWatch> watch;
};

TEST_F(EnduranceTest, AThousandBroadcastsASecond) {
    ASSERT_NO_FATAL_FAILURE(start());
    StandInMonitor stranger(desktop);
    for (int batch = 0; batch < 100; ++batch) {
        for (int each = 0; each < 25; ++each) {
            for (const char* name : {"conflictsUpdated", "portsUpdated", "conflict.3000", "other"})
                stranger.broadcast((std::string("dev.quorvane.zenlot.") + name).c_str());
        }
        QTest::qWait(100);
    }
    expectAllIsWell();
}

TEST_F(EnduranceTest, TenThousandListenersAtOnce) {
    ASSERT_NO_FATAL_FAILURE(start());
    const ChildProcess holder([] { return listenOften(10'000); });
    ASSERT_TRUE(QTest::qWaitFor([&] { return publishedPorts() >= 10'000; }, kPatience));
    ASSERT_TRUE(desktop.waitForLog("count=99")) << "they are summed up"; // nine thousand and more
    expectAllIsWell();
}

} // namespace
} // namespace zenlot
