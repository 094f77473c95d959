#include "support/sample_inventory.h"
#include "support/steered_tables.h"

#include <QRegularExpression>
#include <QTest>
#include <gmock/gmock.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

const QString kPort = u"IGNORE_PORT"_s;
const QString kProcess = u"IGNORE_PROCESS"_s;
const QString kKill = u"KILL_PROCESS"_s;

QString withoutUuids(QString text) {
    return text.replace(
        QRegularExpression(u"-[0-9A-F]{8}-([0-9A-F]{4}-){3}[0-9A-F]{12}(?![0-9A-F])"_s), u"-U"_s);
}

class PortNotificationManagerTest : public testing::Test, protected SampleAlerts<SteeredTables> {
  protected:
    PortNotificationManagerTest() {
        pinner.processes[42] = {.startTime = 7, .ports = {1}};
        pinner.processes[43] = {.ports = {1}};
        QObject::connect(
            &notifications, &NotificationCenter::conflictHandled,
            [this](const HandledConflict& conflict) {
                handled.append(
                    u"%3 %1 %2"_s.arg(conflict.port).arg(conflict.holder.pid).arg(conflict.name));
            });
    }
    QStringList loggedLines() {
        QStringList lines;
        for (const std::string& line : logged())
            lines.append(withoutUuids(QString::fromStdString(line)));
        return lines;
    }
    // The identifier of a new alert about a conflict.
    QString notify(std::int64_t port, const ProcessIdentity& process,
                   const QString& name = u"node"_s) {
        alerts->notifyConflict(port, name, {process, ForceQuitObstacle::none});
        return center.requests.back().identifier;
    }
    void respond(const QString& action) { center.respond(center.requests.back(), action); }

    QStringList handled; // name, port and pid of each
};

TEST_F(PortNotificationManagerTest, AsksTheDesktopAndLogsItsAnswer) {
    alerts->configure(settings);
    center.authorization.isGranted = false;
    center.settings = {AuthorizationStatus::denied, UserNotificationSetting::disabled};
    alerts->configure(settings);
    center.authorization.error = UserNotificationError{u"no bus"_s};
    alerts->configure(settings);

    // Whoever goes while the desktop still thinks it over leaves nothing behind.
    center.isSilent = true;
    alerts->configure(settings);
    alerts.reset();
    EXPECT_FALSE(center.responder);
    center.answer();
    QCoreApplication::processEvents();
    EXPECT_EQ(loggedLines(),
              (QStringList{u"notification setup granted=true status=2 alerts=2 sounds=2"_s,
                           u"notification setup granted=false status=1 alerts=1 sounds=0"_s,
                           u"notification setup failed: no bus"_s}));
}

TEST_F(PortNotificationManagerTest, AlertsTellPortNameAndProcess) {
    const QString name = u"%2 <n>"_s;
    pinner.others = FakePinnedState{.startTime = 99}; // or the alerts would be taken back
    notify(3000, {1234567, 99}, name);
    center.refusal = UserNotificationError{u"not now"_s};
    notify(3000, {1234567, 99}, name);
    alerts->notifyPortActivity(3000, QString(5000, u'x'), {{7}});
    ASSERT_EQ(center.requests.size(), 3U);
    EXPECT_NE(center.requests[0].identifier, center.requests[1].identifier);
    EXPECT_EQ(withoutUuids(center.requests[1].identifier), u"zenlot-conflict-3000-U"_s);
    const UserNotificationAction kill{kKill, u"Kill Process"_s};
    const QList<UserNotificationAction> others{{kPort, u"Ignore Port"_s},
                                               {kProcess, u"Ignore Process"_s}};
    EXPECT_EQ(center.requests[0].content,
              (UserNotificationContent{
                  u"Port 3000 is already in use"_s,
                  u"%2 <n> (PID 1234567) is blocking port 3000 \u2014 kill it to free the port."_s,
                  QList{kill} + others}));
    EXPECT_EQ(center.requests[2].content,
              (UserNotificationContent{
                  u"Port 3000 is now occupied"_s,
                  QString(1024, u'x') + u" (PID 7) started listening on port 3000"_s, others}));
    // Of holders that are not to be seen there may be a name, or not even that.
    notify(80, {0}, u"nginx"_s);
    EXPECT_EQ(center.requests.back().content.body, u"nginx is blocking port 80"_s);
    notify(80, {0}, QString());
    EXPECT_EQ(center.requests.back().content.body, u"Unknown is blocking port 80"_s);
    alerts->notifyPortActivity(80, QString(), {{0}});
    EXPECT_EQ(center.requests.back().content.body, u"Unknown started listening on port 80"_s);
    const QString id = u"id=zenlot-conflict-3000-U"_s;
    const QString posting =
        u"posting notification "_s + id + u" port=3000 pid=1234567 process=%2 <n>"_s;
    EXPECT_EQ(loggedLines().first(4),
              (QStringList{posting, u"notification add succeeded "_s + id, posting,
                           u"notification add failed "_s + id + u": not now"_s}));
}

TEST_F(PortNotificationManagerTest, WhoeverAsksAgainGetsOneAlert) {
    for (int asked = 0; asked < 3; ++asked)
        alerts->notifyConflictAnew(3000, u"node"_s, {{42, 7}, ForceQuitObstacle::none});
    alerts->notifyConflictAnew(3001, u"node"_s, {{42, 7}, ForceQuitObstacle::none});
    ASSERT_EQ(center.requests.size(), 4U);
    EXPECT_EQ(center.removed,
              (QStringList{center.requests[0].identifier, center.requests[1].identifier}));
    EXPECT_TRUE(handled.isEmpty());
}

TEST_F(PortNotificationManagerTest, IgnoringReachesBothListsAndIsTold) {
    const QString late = u"\U0001F600"_s; // by its code point, not by its first unit
    settings.setMonitorIgnoredPorts({9000, 3000});
    settings.setConflictIgnoredPorts({8080, 1});
    settings.setMonitorIgnoredApps({u"\uFF5E"_s, u"b"_s});
    notify(8080, {42}, late);
    respond(kPort); // nobody has said whose lists they are
    alerts->configure(settings);
    defaults.writes.clear();
    for (const QString& action : {kPort, kProcess, kPort, kProcess, u"default"_s}) {
        alerts->notifyPortActivity(8080, late, {{42}});
        respond(action);
    }
    notify(1, {42}, {});
    respond(kProcess);
    EXPECT_EQ(settings.monitorIgnoredPorts(), (QList<qint64>{3000, 8080, 9000}));
    EXPECT_EQ(settings.conflictIgnoredPorts(), (QList<qint64>{8080, 1}));
    EXPECT_EQ(settings.monitorIgnoredApps(), (QStringList{u"b"_s, u"\uFF5E"_s, late}));
    EXPECT_EQ(settings.conflictIgnoredApps(), QStringList{late});
    EXPECT_EQ(defaults.writes.size(), 3U);
    EXPECT_EQ(handled, QStringList(4, late + u" 8080 42"_s));
}

TEST_F(PortNotificationManagerTest, AKillIsToldAlsoToWhoeverEndsTheManager) {
    notify(1, {42, 6}); // somebody else has its id by now
    respond(kKill);
    notify(1, {43, 1});
    QObject::connect(&notifications, &NotificationCenter::conflictHandled,
                     [this] { alerts.reset(); });
    respond(kKill);
    EXPECT_EQ(handled, (QStringList{u"node 1 42"_s, u"node 1 43"_s}));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !pinner.killed().empty(); }));
    EXPECT_THAT(pinner.killed(), ElementsAre(43));
}

TEST_F(PortNotificationManagerTest, AlertsGoWithTheirProcessOrTheirConflict) {
    const QString first = notify(3000, {42, 7});
    const QString second = notify(4000, {42, 7});
    alerts->notifyPortActivity(3000, u"node"_s, {{42, 7}, ForceQuitObstacle::none});
    const QString activity = center.requests.back().identifier;
    const QString other = notify(3000, {43, 1});
    notify(3000, {0});
    processEnds.end(42);
    processEnds.end(42);
    EXPECT_THAT(center.removed, ElementsAre(first, second, activity));
    EXPECT_EQ(handled, (QStringList{u"node 3000 42"_s, u"node 4000 42"_s}));

    // Handled elsewhere: it has to be the same port and process.
    center.removed.clear();
    for (const HandledConflict& another :
         {HandledConflict{3001, {43}, u"node"_s}, HandledConflict{3000, {42}, u"node"_s},
          HandledConflict{3000, {43, 2}, u"node"_s}, HandledConflict{3000, {43}, u"nod"_s}})
        Q_EMIT notifications.conflictHandled(another);
    EXPECT_THAT(center.removed, ElementsAre());
    Q_EMIT notifications.conflictHandled({3000, {43, 1}, u"NODE"_s});
    EXPECT_THAT(center.removed, ElementsAre(other));

    // Somebody else got the id before the watch could begin.
    center.removed.clear();
    const QString late = notify(3000, {43, 0});
    EXPECT_TRUE(QTest::qWaitFor([&] { return center.removed == QStringList(late); }));
    EXPECT_EQ(handled.last(), u"node 3000 43"_s);
}

// Twenty of each kind within ten seconds; beyond that one alert with their number, which is brought
// up to date and opens the window.
TEST_F(PortNotificationManagerTest, AFloodIsSummedUp) {
    int windows = 0;
    QObject::connect(alerts.get(), &PortNotificationManager::allWanted, [&] { ++windows; });
    const auto flood = [this](int count) {
        for (int i = 0; i < count; ++i)
            alerts->notifyConflict(1, u"a"_s, {{43}});
    };
    const auto isSummedUp = [this](const QString& title) {
        return QTest::qWaitFor([&] { return center.requests.back().content.title == title; },
                               60'000);
    };
    flood(1000);
    EXPECT_EQ(center.requests.size(), 20U);
    alerts->notifyPortActivity(2, u"a"_s, {{43}});
    EXPECT_EQ(center.requests.back().content.title, u"Port 2 is now occupied"_s);
    EXPECT_TRUE(isSummedUp(u"… and 980 more"_s));
    flood(5);
    EXPECT_TRUE(isSummedUp(u"… and 985 more"_s));
    EXPECT_EQ(center.requests.size(), 23U);
    EXPECT_EQ(center.requests[21].identifier, center.requests[22].identifier);
    respond(u"default"_s);
    EXPECT_EQ(windows, 1);
    now += PortNotificationManager::kWhile;
    flood(1);
    EXPECT_EQ(center.requests.back().content.title, u"Port 1 is already in use"_s);
}

// Shown when something comes that shows alerts, where the process still holds the port.
TEST_F(PortNotificationManagerTest, RefusedAlertsAreShownLaterWhileTheyAreTrue) {
    tables.addListener(1, 42, currentUserId(), "/bin/a");
    tables.addListener(2, 43, currentUserId(), "/bin/b");
    center.refusal = UserNotificationError{u"nobody there"_s};
    const QString kept = notify(1, {42, 7});
    notify(2, {42, 7}); // somebody else has the port by then
    const QString ended = notify(2, {43});
    center.refusal.reset();
    const QString shown = notify(1, {42, 7});
    processEnds.end(43);
    center.requests.clear();
    for (int arrivals = 0; arrivals < 2; ++arrivals) {
        center.arrivalHandler();
        EXPECT_TRUE(QTest::qWaitFor([this] { return !center.requests.empty(); }));
    }
    ASSERT_EQ(center.requests.size(), 1U);
    EXPECT_EQ(center.requests[0].identifier, kept);
    respond(kKill);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !pinner.killed().empty(); }));
}

TEST_F(PortNotificationManagerTest, WatchesABoundedNumberOfProcesses) {
    pinner.others = FakePinnedState();
    for (ProcessId pid = 100; pid < 500; ++pid, now += PortNotificationManager::kWhile)
        alerts->notifyPortActivity(1, u"a"_s, {{pid, 1}, ForceQuitObstacle::none});
    EXPECT_EQ(processEnds.count(), PortNotificationManager::kMostStanding);
    processEnds.end(100);
    processEnds.end(499);
    EXPECT_THAT(center.removed, ElementsAre(center.requests.back().identifier));
    alerts.reset();
    EXPECT_EQ(processEnds.count(), 0U);
}

} // namespace
} // namespace zenlot
