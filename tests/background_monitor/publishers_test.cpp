#include "background_monitor/bounded_work.h"
#include "background_monitor/conflict_publisher.h"
#include "background_monitor/port_publisher.h"
#include "monitoring/shared_container.h"
#include "platform/fake_broadcast_center.h"
#include "support/temporary_folder.h"

#include <QCoreApplication>
#include <gmock/gmock.h>

#include <sys/stat.h>

#include <future>
#include <stdexcept>
#include <thread>

namespace zenlot {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class PublisherTest : public testing::Test {
  protected:
    PublisherTest() {
        for (const char* name : {"portsUpdated", "conflictsUpdated", "conflict.3000"}) {
            broadcasts.observe(
                QStringLiteral("dev.quorvane.zenlot.%1").arg(QLatin1StringView(name)),
                BroadcastCenter::Meaning::readAnew, &context, [this](const QString& heard) {
                    posted.push_back(heard.toStdString());
                    // What is announced is there.
                    fileAtPost = folder.read(kFolder + "conflicts.json");
                });
        }
    }

    const std::string kFolder = "state/group.dev.quorvane.zenlot/";
    TemporaryFolder folder;
    ContainerWriter container{QString::fromStdString((folder.path() / "state").string())};
    FakeBroadcastCenter broadcasts;
    QObject context;
    std::vector<std::string> posted;
    std::string fileAtPost;
    AppLog log{QString::fromStdString((folder.path() / "log").string()),
               std::chrono::system_clock::now, AppLog::Author::backgroundMonitor};
    double time = 0;
    ConflictPublisher::Clock clock = [this] { return fromReferenceSeconds(++time); };
};

TEST_F(PublisherTest, ConflictReachesFilesSignalsAndLog) {
    ConflictPublisher publisher(container, broadcasts, log, clock);
    publisher.publish({Verdict::Kind::drift, 3000, {42, {}, {}, "a, b (pid 1)", "A"}, 77});
    const std::string record =
        R"~({"port":3000,"pid":42,"processName":"a, b (pid 1)","displayName":"A","detectedAt":1.0})~";
    EXPECT_EQ(folder.read(kFolder + "conflict-3000.json"), record);
    QCoreApplication::processEvents();
    EXPECT_EQ(fileAtPost, "[" + record + "]");
    EXPECT_THAT(posted, ElementsAre("dev.quorvane.zenlot.conflictsUpdated",
                                    "dev.quorvane.zenlot.conflict.3000"));
    log.settle();
    EXPECT_THAT(folder.read("log"),
                HasSubstr(" [zenlot-daemon] broadcasting port 3000, a_b_pid_1_ (pid 42)\n"));
    struct stat status {};
    ASSERT_EQ(::stat((folder.path() / kFolder).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777, 0700U);
}

TEST_F(PublisherTest, RecordsAreBoundedAndSurviveARestart) {
    for (std::uint16_t port = 1; port <= ConflictPublisher::kMostRecords + 2; ++port)
        ConflictPublisher(container, broadcasts, log, clock)
            .publish({Verdict::Kind::failedStart, port, {}, 77});
    const auto records = decodeConflictRecords(folder.read(kFolder + "conflicts.json")).value();
    EXPECT_EQ(records.size(), ConflictPublisher::kMostRecords);
    EXPECT_EQ(records.front().port, 3);
    EXPECT_EQ(records.front().displayName, "Process");
    // Two lists, and one file for each port that is still listed.
    EXPECT_EQ(folder.names(kFolder).size(), ConflictPublisher::kMostRecords + 1);
}

TEST_F(PublisherTest, NothingIsAnnouncedThatCouldNotBeWritten) {
    ConflictPublisher publisher(container, broadcasts, log, clock);
    // A folder in its place can't be replaced by a file, as little as a file on a full disk.
    folder.write(kFolder + "conflicts.json/x", "");
    publisher.publish({Verdict::Kind::drift, 3000, {42, {}, {}, "a", "A"}, 77});
    publisher.publishUnwritten();
    QCoreApplication::processEvents();
    EXPECT_TRUE(posted.empty());
    std::filesystem::remove_all(folder.path() / kFolder / "conflicts.json");
    publisher.publishUnwritten();
    publisher.publishUnwritten();
    QCoreApplication::processEvents();
    EXPECT_EQ(posted.size(), 2U);
    EXPECT_EQ(decodeConflictRecords(folder.read(kFolder + "conflicts.json")).value().size(), 1U);
}

TEST_F(PublisherTest, RecordsOfTheFutureAreDroppedAtTheStart) {
    time = 1000;
    ConflictPublisher(container, broadcasts, log, clock)
        .publish({Verdict::Kind::drift, 3000, {42, {}, {}, "a", "A"}, 77});
    time = 1; // the clock was set back
    ConflictPublisher(container, broadcasts, log, clock)
        .publish({Verdict::Kind::drift, 3001, {42, {}, {}, "a", "A"}, 77});
    const auto records = decodeConflictRecords(folder.read(kFolder + "conflicts.json")).value();
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].port, 3001);
}

TEST_F(PublisherTest, PortsArePublishedWhenTheyChange) {
    PortPublisher publisher(container, broadcasts);
    const std::vector<OccupiedPort> ports{{80, "TCP4", "a", "A", 7, "1", "/a"}};
    EXPECT_TRUE(publisher.publish({}));
    EXPECT_EQ(folder.read(kFolder + "ports.json"), "[]");
    EXPECT_FALSE(publisher.publish({}));
    EXPECT_TRUE(publisher.publish(ports));
    EXPECT_EQ(publisher.ownerOf(80), 7);
    EXPECT_EQ(publisher.ownerOf(81), 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(posted.size(), 2U);

    publisher.withdraw();
    EXPECT_EQ(folder.read(kFolder + "ports.json"), "[]");
    EXPECT_FALSE(publisher.lists(80));
    publisher.forget();
    EXPECT_TRUE(publisher.publish({})) << "a list that is lost is published again";
    QCoreApplication::processEvents();
    EXPECT_EQ(posted.size(), 4U);
}

TEST(BoundedWorkTest, LeavesBehindWhatDoesNotComeBack) {
    BoundedWork work(std::chrono::milliseconds(20));
    EXPECT_EQ(work.run<int>([] { return 7; }), 7);
    EXPECT_EQ(work.run<int>([]() -> int { throw std::runtime_error("no"); }), std::nullopt);
    const auto network = std::make_shared<std::promise<void>>();
    EXPECT_EQ(work.run<int>([isBack = network->get_future().share()] {
        isBack.wait();
        return 8;
    }),
              std::nullopt);
    EXPECT_EQ(work.run<int>([] { return 9; }), std::nullopt) << "the last one still hangs";
    network->set_value();
    std::optional<int> answer;
    while (!(answer = work.run<int>([] { return 10; })))
        std::this_thread::yield();
    EXPECT_EQ(answer, 10);
}

} // namespace
} // namespace zenlot
