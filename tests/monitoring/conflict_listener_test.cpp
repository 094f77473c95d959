#include "monitoring/broadcast_names.h"
#include "monitoring/conflict_listener.h"
#include "platform/fake_broadcast_center.h"
#include "support/sample_inventory.h"

#include <QTest>
#include <gmock/gmock.h>

#include <atomic>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Strings = std::vector<std::string>;

const std::string kContainer = "group.dev.quorvane.zenlot/";
const std::string kList = kContainer + "conflicts.json";
const std::string kAnnounce = "[zenlot-daemon] broadcasting ";
const std::string kLine = "2026-01-01T00:00:00Z " + kAnnounce + "port ";
constexpr ReferenceTime kNow = fromReferenceSeconds(785'542'800.5);

ConflictRecord recordOf(std::int64_t port, ReferenceTime time, const std::string& name = "node") {
    return {port, 42, name, name, time};
}

class ConflictListenerTest : public testing::Test, protected SampleAlerts<> {
  protected:
    ConflictListenerTest() {
        settings.setConflictMonitoringEnabled(true);
        pinner.others = FakePinnedState();
        cache.replace({{80, "", "web", "Web", 7, "501", ""}, {90, "", "x", "X", 7, "501", ""}});
        QObject::connect(&notifications, &NotificationCenter::conflictDetected,
                         [this](const Conflict& conflict) {
                             detected.push_back(conflict);
                             announced.push_back(conflict.processName.toStdString());
                         });
        publish("conflicts", "");
    }
    // Without the alerts' own lines.
    Strings logged() {
        Strings lines = SampleAlerts::logged();
        std::erase_if(lines, [](const std::string& line) {
            return line.find("notification ") != std::string::npos;
        });
        return lines;
    }
    void publish(const std::string& name, const std::string& json) const {
        folder.write(kContainer + name + ".json", json);
    }
    void check() const { QCoro::waitFor(listener->checkConflictRecords()); }
    void handle(std::int64_t port) const { QCoro::waitFor(listener->handleLegacyConflict(port)); }
    void pollLog(const std::string& appended) const {
        std::ofstream(folder.path() / "log", std::ios::app) << appended;
        QCoro::waitFor(listener->pollLegacyDaemonLog());
    }

    FakeBroadcastCenter broadcasts;
    std::vector<Conflict> detected;
    Strings announced;                    // the names
    std::atomic<ReferenceTime> now{kNow}; // read by workers too
    const ConflictListener::Collaborators with{SharedContainer(home),
                                               inventory,
                                               *alerts,
                                               notifications,
                                               broadcasts,
                                               log,
                                               home + u"log"_s,
                                               [this] { return now.load(); }};
    std::unique_ptr<ConflictListener> listener =
        std::make_unique<ConflictListener>(with, ConflictListenerPauses{1h, 1ms, 1ms});
};

TEST_F(ConflictListenerTest, KeysAgesAndLines) {
    EXPECT_EQ(ConflictListener::deliveryKey({80, 42, "", "", fromReferenceSeconds(0.5)}),
              "42:80:978307200.5");
    EXPECT_TRUE(listener->isFresh(recordOf(1, kNow - 59s)));
    listener->start(settings);
    for (const auto& [age, isFresh] : {std::pair{3s, true}, {5s, true}, {6s, false}})
        EXPECT_EQ(listener->isFresh(recordOf(1, kNow - age)), isFresh);
    now = kNow + 60s;
    EXPECT_TRUE(listener->isFresh(recordOf(1, kNow)));
    EXPECT_FALSE(listener->isFresh(recordOf(1, kNow - 0.5s)));
    EXPECT_FALSE(listener->isFresh({1, 1, "", "", std::nullopt}));
    // The clock may be set to another day.
    for (const auto day : {24h, -24h}) {
        now = kNow + day;
        EXPECT_TRUE(listener->isFresh(recordOf(1, kNow + day - 3s)));
    }
    now = kNow + 60s;

    const std::pair<std::string, std::optional<ConflictRecord>> lines[] = {
        {kAnnounce + "port 3000, node (pid 42)", recordOf(3000, kNow + 60s)},
        {"a, b" + kAnnounce + "port 80 (pid 42", recordOf(80, now, "b" + kAnnounce + "port 80")},
        {"x (pid 42), " + kAnnounce + "report  5", recordOf(5, now, "Process")},
        {kAnnounce + "port 80, (pid 99999999999999999999)",
         ConflictRecord{80, 0, "Process", "Process", now}},
        {kAnnounce + "port \t80", {}},
        {kAnnounce + "port ٣, port 80", {}},
        {"[zenlot-daemon] heard broadcasting port 80", {}}};
    for (const auto& [line, expected] : lines)
        EXPECT_EQ(listener->parseLegacyLogLine(QString::fromStdString(line)), expected) << line;
}

TEST_F(ConflictListenerTest, ReadsTheListAndObeysTheRulesInTheirOrder) {
    check(); // there are no settings yet
    listener->start(settings);
    listener->start(settings);
    EXPECT_EQ(broadcasts.observerCount(conflictBroadcast(9090)), 1U);
    settings.setConflictIgnoredPorts({3000});
    settings.setConflictIgnoredApps({QString(), u"Node"_s});
    std::vector<ConflictRecord> records(5, recordOf(1, kNow - 1h));
    for (int reading = 0; reading < 2; ++reading) {
        publish("conflicts", encodeConflictRecords(records));
        check();
        check();
        records.insert(records.begin() + 1, {recordOf(2, kNow, "no"), recordOf(3000, kNow, "web"),
                                             recordOf(3, kNow, ""), recordOf(1, kNow, "node-dev")});
    }
    settings.setConflictIgnoredPorts({});
    settings.setConflictIgnoredApps({});
    check();
    publish("conflicts", R"([{"port":1}])");
    check();
    EXPECT_EQ(logged(),
              (Strings{"conflict listener started", "conflict records loaded count=5 fresh=0",
                       "conflict records loaded count=9 fresh=4",
                       "conflict ignored port=2: ignored app no",
                       "conflict ignored port=3000: ignored port",
                       "conflict notifying port=3 pid=42 process=",
                       "conflict ignored port=1: ignored app node-dev",
                       "conflict ignored port=3000: ignored port",
                       "conflict notifying port=3000 pid=42 process=web"}));
    QCoro::waitFor(listener->deliver({4, 42, std::string(1023, 'x') + "é", "Shown", kNow}));
    EXPECT_EQ(announced, (Strings{"", "web", std::string(1023, 'x')}));
    EXPECT_TRUE(center.requests.at(2).content.body.startsWith(u"Shown (PID 42) "_s));
}

TEST_F(ConflictListenerTest, AnnouncesOnlyHoldersThatAreThereAndWereThereBefore) {
    using Obstacle = ForceQuitObstacle;
    const ReferenceTime whole = kNow - 0.5s;
    const auto startedAt = [](ReferenceTime time) {
        using Time = std::chrono::system_clock;
        return FakePinnedState{.startTime = 7,
                               .startedAt = kReferenceDate + std::chrono::round<Time::duration>(
                                                                 time.time_since_epoch())};
    };
    const FakePinnedState gone{.hasEnded = true};
    const FakePinnedState manager{.startTime = 7, .isServiceManager = true};
    const FakePinnedState ofOther{.startTime = 7, .effectiveUid = 4'000'000};
    const FakePinnedState hidden{.startTime = {}, .effectiveUid = {}};
    const std::string ended = "conflict ignored port=1: holder has ended";
    const std::string later = "conflict ignored port=1: holder started later";
    struct Case {
        std::int64_t pid;
        FakePinnedState state;
        ReferenceTime detectedAt;
        std::optional<Obstacle> announced; // or else
        std::string refusal;
    };
    const Case cases[] = {
        {50, gone, kNow, {}, ended},
        {51, startedAt(kNow + 0.02s), kNow, {}, later},
        {52, startedAt(kNow - 0.02s), kNow, Obstacle::none, {}},
        {53, startedAt(whole + 0.9s), whole, Obstacle::none, {}}, // whose fraction was cut off
        {54, startedAt(whole + 1.1s), whole, {}, later},
        {55, manager, kNow, Obstacle::serviceManager, {}},
        {56, ofOther, kNow, Obstacle::anotherUser, {}},
        {57, hidden, kNow, Obstacle::unknownOwner, {}},
        {0, {}, kNow, Obstacle::unknownOwner, {}},
        {(1LL << 32) + 52, {}, kNow, Obstacle::unknownOwner, {}},
    };
    listener->start(settings);
    std::vector<ConflictRecord> records;
    Strings lines;
    for (const Case& each : cases) {
        if (processIdOf(each.pid) != 0)
            pinner.set(processIdOf(each.pid), each.state);
        records.push_back({1, each.pid, "node", "Node", each.detectedAt});
        lines.push_back(each.announced ? "conflict notifying port=1 pid=" +
                                             std::to_string(each.pid) + " process=node"
                                       : each.refusal);
    }
    publish("conflicts", encodeConflictRecords(records));
    logged();
    check();
    check(); // neither these nor those are told again
    Strings told = logged();
    std::erase_if(told, [](const std::string& line) {
        return line.find(" records loaded ") != std::string::npos;
    });
    EXPECT_EQ(told, lines);

    std::size_t place = 0;
    for (const Case& each : cases) {
        if (!each.announced)
            continue;
        SCOPED_TRACE(each.pid);
        ASSERT_LT(place, detected.size());
        const Conflict& conflict = detected[place];
        EXPECT_EQ(conflict.obstacle, *each.announced);
        const auto start = each.pid < 57 && each.pid > 0 ? std::optional(7L) : std::nullopt;
        EXPECT_EQ(conflict.holder, (ProcessIdentity{each.pid, start}));
        EXPECT_EQ(center.requests[place++].content.actions.size(),
                  *each.announced == Obstacle::none ? 3 : 2);
    }
    EXPECT_EQ(detected.size(), place);
}

TEST_F(ConflictListenerTest, AnswersForAPortFromItsFileOrElseFromItsHolder) {
    handle(80); // there are no settings yet
    listener->start(settings);
    settings.setConflictIgnoredPorts({3000});
    publish("conflict-80", encodeConflictRecord(recordOf(80, kNow - 1h)));
    publish("conflict-81", encodeConflictRecord(recordOf(81, kNow)));
    publish("conflict-90", "{");
    for (const std::int64_t port : {3000, 80, 81, 82, 90})
        handle(port);
    settings.setConflictMonitoringEnabled(false);
    handle(80);
    publish("conflicts", encodeConflictRecords(std::vector{recordOf(1, kNow)}));
    check();
    EXPECT_EQ(logged(), (Strings{"conflict listener started",
                                 "legacy conflict ignored port=3000: ignored port",
                                 "legacy conflict record ignored port=80: stale",
                                 "conflict notifying port=80 pid=7 process=web",
                                 "legacy conflict record found port=81",
                                 "conflict notifying port=81 pid=42 process=node",
                                 "legacy conflict ignored port=82: no process found",
                                 "conflict notifying port=90 pid=7 process=x",
                                 "legacy conflict ignored port=80: setting disabled"}));
}

TEST_F(ConflictListenerTest, AnnouncesNothingTwiceInAFloodOfBroadcasts) {
    listener->start(settings);
    publish("conflicts", encodeConflictRecords(std::vector{recordOf(1, kNow, "listed")}));
    publish("conflict-8080", encodeConflictRecord(recordOf(8080, kNow, "filed")));
    publish("conflict-8000", encodeConflictRecord(recordOf(8000, kNow - 1h)));
    cache.replace({{8000, "", "live", "Live", 7, "501", ""}});
    for (int count = 0; count < 10'000; ++count)
        broadcasts.post(count % 3 == 0   ? QString(kConflictsUpdatedBroadcast)
                        : count % 3 == 1 ? conflictBroadcast(8080)
                                         : conflictBroadcast(8000));
    std::ptrdiff_t answers = 0;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        now = now.load() + 1ms; // a second look at the holder would find another conflict
        answers += std::ranges::count(logged(), "legacy conflict record ignored port=8000: stale");
        return answers == 2 && announced.size() >= 3;
    }));
    handle(9); // which ends behind whatever else is being looked up
    EXPECT_THAT(announced, testing::UnorderedElementsAre("listed", "filed", "live"));
    int looks = 0;
    ASSERT_TRUE(QTest::qWaitFor([&] { // that the flood is over, and the holder looked up again
        if (++looks % 20 == 0)
            broadcasts.post(conflictBroadcast(8000));
        return announced.size() == 4;
    }));
}

// The background monitor writes a record and a line, in which the name may look otherwise.
TEST_F(ConflictListenerTest, TakesTheRecordAndTheLineOfAConflictForOne) {
    listener->start(settings);
    pollLog({});
    const auto publishNow = [this](const std::string& name) {
        publish("conflicts", encodeConflictRecords(std::vector{recordOf(80, now, name)}));
        check();
        now = now.load() + 1ms; // the line tells no time, and is of when it is read
    };
    publishNow("a b");
    pollLog(kLine + "80, a_b (pid 42)\n");
    now = now.load() + 5s; // tried once more
    publishNow("again");
    pollLog(kLine + "80, again (pid 42)\n");
    pollLog(kLine + "80, other (pid 43)\n" + kLine + "81, other_port (pid 42)\n");
    EXPECT_EQ(std::exchange(announced, {}), (Strings{"a b", "again", "other", "other_port"}));
    // The line may be read first.
    now = now.load() + 11s;
    pollLog(kLine + "80, line (pid 42)\n");
    publishNow("record");
    EXPECT_EQ(std::exchange(announced, {}), Strings{"line"});
    // What an application's entry has silenced stays so.
    settings.setConflictIgnoredApps({u"my tool"_s});
    now = now.load() + 11s;
    publishNow("my tool");
    pollLog(kLine + "80, my_tool (pid 42)\n");
    EXPECT_EQ(announced, Strings{});
}

TEST_F(ConflictListenerTest, AnnouncesWhatIsAppendedToTheLog) {
    pollLog(kLine + "1, before (pid 1)\n"); // there are no settings yet
    listener->start(settings);
    pollLog({}); // marks the end, if the poll of the start hasn't
    const std::string own = "2026-01-01T00:00:00Z [zenlot-app] conflict notifying process=";
    const std::string accents = "\nx" + QByteArray("é").repeated(300'000).toStdString();
    const std::pair<std::string, Strings> pieces[] = {
        {kLine + "2, a (pid 1)\nelse\n" + kLine + "3, b (pid 1)\r\n", {"a", "b"}},
        {kLine + "4, unfinished (pid 1)", {"unfinished"}},
        {"\n" + own + kLine + "5, own (pid 1)\n", {}},
        {own.substr(0, 25), {}},
        {own.substr(25) + kLine + "6, own (pid 1)\n" + kLine + "6, c (pid 1)\n", {"c"}},
        {kLine + "7, wrong (pid 1)\n\xff\n", {}},
        {kLine + "7, cut (pid 1)\n\xc3", {}},
        // Longer than a line and than what is read at a time, which ends within a character.
        {accents + kLine + "7, long (pid 1)\n" + kLine + "7, d (pid 1)\n", {"d"}}};
    for (const auto& [piece, names] : pieces) {
        pollLog(piece);
        EXPECT_EQ(std::exchange(announced, {}), names) << piece.substr(0, 200);
    }
    for (const char* const cleared : {"", "longer than before\n"}) {
        folder.write("log", cleared + kLine + "8, e (pid 1)\n");
        pollLog({});
    }
    pollLog(kLine + "9, f (pid 1)\n");
    EXPECT_EQ(announced, Strings{"f"});
}

TEST_F(ConflictListenerTest, PollsUntilItIsDestroyed) {
    listener = std::make_unique<ConflictListener>(with, ConflictListenerPauses{1ms, 1ms, 1ms});
    listener->start(settings);
    publish("conflicts", encodeConflictRecords(std::vector{recordOf(1, kNow, "listed")}));
    ASSERT_TRUE(QTest::qWaitFor([&] { return announced.size() == 1; }));
    QObject::connect(&notifications, &NotificationCenter::conflictDetected,
                     [this] { listener.reset(); });
    ASSERT_TRUE(QTest::qWaitFor([&] {
        std::ofstream(folder.path() / "log", std::ios::app) << kLine + "2\n" + kLine + "3\n";
        return !listener;
    }));
    EXPECT_EQ(announced.size(), 2U);
    EXPECT_EQ(center.requests.size(), 1U);
}

} // namespace
} // namespace zenlot
