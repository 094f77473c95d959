#include "monitoring/port_monitor.h"
#include "support/sample_inventory.h"
#include "support/steered_tables.h"

#include <QCoroTask>
#include <QTest>
#include <gmock/gmock.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class PortMonitorTest : public testing::Test, protected SampleAlerts<SteeredTables> {
  protected:
    PortMonitorTest() { pinner.others = FakePinnedState(); }

    using Strings = std::vector<std::string>;

    // Each program has a port of its own, whose number it is known by.
    void listen(std::uint16_t port, const std::string& program, UserId user = currentUserId()) {
        tables.end(port);
        tables.addListener(port, port, user, "/bin/" + program);
    }
    static OccupiedPort published(std::int64_t port, const std::string& name,
                                  UserId user = currentUserId()) {
        return {port, "TCP4", name, name, 7, std::to_string(user), "/bin/" + name};
    }
    // The titles of the alerts that two polls at once raise.
    Strings poll() {
        const QCoro::Task<> polls[] = {monitor->checkForNewListeners(),
                                       monitor->checkForNewListeners()};
        for (const QCoro::Task<>& each : polls)
            QCoro::waitFor(each);
        return announced();
    }
    Strings announced() {
        Strings titles;
        for (const UserNotificationRequest& request : std::exchange(center.requests, {}))
            titles.push_back(request.content.title.toStdString());
        return titles;
    }
    // The monitor's own lines.
    Strings logged() {
        Strings lines = SampleAlerts::logged();
        std::erase_if(lines,
                      [](const std::string& line) { return !line.starts_with("port activity "); });
        return lines;
    }

    std::unique_ptr<PortMonitor> monitor =
        std::make_unique<PortMonitor>(inventory, *alerts, log, 1h);
};

constexpr UserId kSomebodyElse = 4'000'000;

TEST_F(PortMonitorTest, AnnouncesWhatThePollBeforeDidNotFind) {
    listen(5173, "old-server");
    monitor->start(settings);
    EXPECT_THAT(poll(), IsEmpty());
    listen(5174, "newServer");
    listen(631, "cupsd", kSomebodyElse);
    EXPECT_THAT(poll(), ElementsAre("Port 5174 is now occupied"));
    EXPECT_THAT(poll(), IsEmpty());
    listen(5174, "another-owner");
    EXPECT_THAT(poll(), IsEmpty());
    tables.end(5174);
    EXPECT_THAT(poll(), IsEmpty());

    // Entries of somebody else don't stand before one's own, nor the second before the first.
    listen(3000, "node");
    cache.replace({published(4000, "other", kSomebodyElse), published(4000, "first"),
                   published(4000, "second"), published(4001, "other", kSomebodyElse)});
    listen(5174, "newServer");
    EXPECT_THAT(poll(), ElementsAre("Port 3000 is now occupied", "Port 4000 is now occupied",
                                    "Port 5174 is now occupied"));
    EXPECT_THAT(logged(),
                ElementsAre("port activity monitor started",
                            "port activity detected port=5174 pid=5174 process=New Server",
                            "port activity detected port=3000 pid=3000 process=Node",
                            "port activity detected port=4000 pid=7 process=first",
                            "port activity detected port=5174 pid=5174 process=New Server"));
}

TEST_F(PortMonitorTest, KeepsToTheIgnoreListsOfTheLatestSettings) {
    AppSettings latest(defaults, loginItem);
    latest.setMonitorIgnoredPorts({9, 5174});
    latest.setMonitorIgnoredApps({QString(), u"Postgres"_s, u"docker desktop"_s});
    monitor->start(settings);
    monitor->start(latest);
    EXPECT_THAT(poll(), IsEmpty());
    listen(11, "postgres-server");
    listen(12, "docker");
    listen(13, "node");
    listen(5174, "other");
    EXPECT_THAT(poll(), ElementsAre("Port 13 is now occupied"));
    EXPECT_THAT(logged(), ElementsAre(testing::_, testing::HasSubstr("port=13 ")));
}

TEST_F(PortMonitorTest, TellsOfOwnersThatAreThereAndOffersToEndWhoMayBeEnded) {
    monitor->start(settings);
    EXPECT_THAT(poll(), IsEmpty());
    pinner.set(11, {.hasEnded = true});
    pinner.set(12, {.ports = {12}, .isServiceManager = true});
    pinner.set(13, {.startTime = 99, .ports = {13}});
    for (std::uint16_t port = 11; port <= 13; ++port)
        listen(port, "server");
    QCoro::waitFor(monitor->checkForNewListeners());
    ASSERT_EQ(center.requests.size(), 2U);
    EXPECT_TRUE(center.requests[0].content.body.contains(u"(PID 12)"));
    EXPECT_EQ(center.requests[0].content.actions.size(), 2) << "without the one that ends it";
    EXPECT_EQ(center.requests[1].content.actions.size(), 3);
    EXPECT_THAT(logged(), testing::Contains("port activity ignored port=11: process has ended"));
}

TEST_F(PortMonitorTest, PollsUntilItIsStopped) {
    monitor = std::make_unique<PortMonitor>(inventory, *alerts, log, 0ms);
    monitor->start(settings);
    EXPECT_TRUE(monitor->isRunning());
    ASSERT_TRUE(QTest::qWaitFor([this] { return tables.lookups({}) > 2; }));
    listen(5174, "new");
    ASSERT_TRUE(QTest::qWaitFor([this] { return !center.requests.empty(); }));
    monitor->stop();
    monitor->start(settings);
    monitor->stop(); // with a poll under way
    EXPECT_FALSE(monitor->isRunning());
}

TEST_F(PortMonitorTest, PollsUnderWayCountForNothingOnceStopped) {
    const auto startAndScan = [this] {
        monitor->start(settings);
        return tables.snapshotsTaken.try_acquire_for(10s);
    };
    ASSERT_TRUE(startAndScan());
    monitor->stop();
    listen(1, "while-stopped");
    EXPECT_THAT(poll(), IsEmpty());
    tables.snapshotsTaken.acquire();
    monitor->stop();

    ASSERT_TRUE(startAndScan());
    monitor->stop();
    listen(2, "while-stopped");
    ASSERT_TRUE(startAndScan());
    EXPECT_THAT(poll(), IsEmpty());
    listen(3, "new");
    EXPECT_THAT(poll(), ElementsAre("Port 3 is now occupied"));

    const QCoro::Task<> open = monitor->checkForNewListeners();
    monitor.reset();
    QCoro::waitFor(open);
}

} // namespace
} // namespace zenlot
