#include "inventory/fake_process_pinner.h"
#include "inventory/fake_process_tables.h"
#include "monitoring/port_notification_manager.h"
#include "platform/fake_app_service.h"
#include "platform/fake_process_end_watch.h"
#include "platform/fake_user_defaults.h"
#include "platform/fake_user_notification_center.h"
#include "support/temporary_folder.h"

#include <QRegularExpression>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

class PortNotificationManagerTest : public testing::Test {
  protected:
    PortNotificationManagerTest() {
        pinner.processes[42] = {.startTime = 7, .ports = {1}};
        pinner.processes[43] = {.ports = {1}};
        notifications.observe(kConflictHandled, &notifications, [this](const UserInfo& info) {
            handled.append(info.string(kProcessNameKey).value_or(u"none"_s));
            for (const QLatin1StringView key : {kPortKey, kPidKey})
                handled.last() += u' ' + QString::number(info.integer(key).value_or(-1));
        });
    }
    // The log without times and tags.
    QString logged() const {
        return withoutUuids(QString::fromStdString(folder.read("log")))
            .replace(QRegularExpression(u"(^|\n)\\S+ \\[zenlot-app\\] "_s), u"\\1"_s);
    }
    bool respond(const UserInfo& info, const QString& action) const {
        UserNotificationRequest request;
        request.content.userInfo = info;
        return alerts.respond(request, action);
    }

    TemporaryFolder folder;
    FakeUserDefaults defaults;
    FakeAppService loginItem;
    std::unique_ptr<AppSettings> settings = std::make_unique<AppSettings>(defaults, loginItem);
    FakeProcessTables tables;
    PortScanner scanner{tables, [](auto...) { return false; }};
    SharedPortCache cache;
    PortLookup lookup{scanner, cache};
    FakeProcessPinner pinner;
    std::unique_ptr<PortInventory> inventory =
        std::make_unique<PortInventory>(scanner, lookup, cache, pinner);
    NotificationCenter notifications;
    AppLog log{QString::fromStdString((folder.path() / "log").string())};
    FakeUserNotificationCenter alerts;
    FakeProcessEndWatch processEnds;
    QStringList handled; // name, port and pid of each, -1 for what is missing
    std::unique_ptr<PortNotificationManager> manager = std::make_unique<PortNotificationManager>(
        alerts, *inventory, processEnds, notifications, log);
};

TEST_F(PortNotificationManagerTest, ConfiguresTheDesktopAndLogsItsAnswer) {
    manager->configure(*settings);
    const QList<UserNotificationAction> actions{{kKill, u"Kill Process"_s, true},
                                                {kPort, u"Ignore Port"_s},
                                                {kProcess, u"Ignore Process"_s}};
    EXPECT_EQ(alerts.categories, (QList<UserNotificationCategory>{{u"PORT_OCCUPIED"_s, actions}}));
    EXPECT_EQ(alerts.authorizationRequests.at(0), (AuthorizationOptions{true, true, false}));
    EXPECT_EQ(alerts.delegate->willPresentNotification({}),
              (PresentationOptions{true, true, true, false}));
    alerts.authorization.isGranted = false;
    alerts.settings = {AuthorizationStatus::denied, UserNotificationSetting::disabled};
    manager->configure(*settings);
    alerts.authorization.error = UserNotificationError{u"no bus"_s};
    manager->configure(*settings);

    // Whoever goes while the desktop still thinks it over leaves nothing behind.
    alerts.isSilent = true;
    manager->configure(*settings);
    manager.reset();
    EXPECT_EQ(alerts.delegate, nullptr);
    alerts.answer();
    QCoreApplication::processEvents();
    EXPECT_EQ(logged(), u"notification setup granted=true status=2 alerts=2 sounds=2\n"
                        "notification setup granted=false status=1 alerts=1 sounds=0\n"
                        "notification setup failed: no bus\n"_s);
}

TEST_F(PortNotificationManagerTest, AlertsTellPortNameAndProcess) {
    const QString name = u"%2 <n>"_s;
    pinner.others = FakePinnedState{.startTime = 99}; // or the alerts would be taken back
    const ProcessSighting seen{{1234567, 99}, ForceQuitObstacle::none};
    manager->notifyConflict(3000, name, seen);
    alerts.refusal = UserNotificationError{u"not now"_s};
    manager->notifyConflict(3000, name, seen);
    manager->notifyPortActivity(3000, QString(5000, u'x'), {{7}});
    ASSERT_EQ(alerts.requests.size(), 3U);
    EXPECT_NE(alerts.requests[0].identifier, alerts.requests[1].identifier);
    EXPECT_EQ(withoutUuids(alerts.requests[1].identifier), u"zenlot-conflict-3000-U"_s);
    const UserNotificationContent content{
        u"Port 3000 is already in use"_s,
        u"%2 <n> (PID 1234567) is blocking port 3000 \u2014 kill it to free the port."_s,
        u"PORT_OCCUPIED"_s,
        u"zenlot-port-3000"_s,
        u"Port 3000"_s,
        {{u"pid"_s, 1234567}, {u"port"_s, 3000}, {u"processName"_s, name}, {u"startTime"_s, 99}},
        true,
        InterruptionLevel::timeSensitive};
    EXPECT_EQ(alerts.requests[0].content, content);
    const QString cut(1024, u'x');
    EXPECT_EQ(alerts.requests[2].content.title, u"Port 3000 is now occupied"_s);
    EXPECT_EQ(alerts.requests[2].content.body, cut + u" (PID 7) started listening on port 3000"_s);
    EXPECT_EQ(alerts.requests[2].content.userInfo.string(kProcessNameKey), cut);
    EXPECT_EQ(alerts.requests[2].content.withheldActions,
              QStringList(kKill)); // of somebody unknown
    const QString id = u"id=zenlot-conflict-3000-U"_s;
    const QString posting =
        u"posting notification "_s + id + u" port=3000 pid=1234567 process=%2 <n>\n"_s;
    EXPECT_TRUE(logged().startsWith(
        posting + u"notification add succeeded "_s + id + u'\n' + posting +
        u"notification add failed "_s + id + u": not now\n"_s +
        u"posting notification id=zenlot-port-3000-U port=3000 pid=7 process=xx"_s));
}

TEST_F(PortNotificationManagerTest, IgnoringReachesBothListsAndIsTold) {
    const QString late = u"\U0001F600"_s; // by its code point, not by its first unit
    settings->setMonitorIgnoredPorts({9000, 3000});
    settings->setConflictIgnoredPorts({8080, 1});
    settings->setMonitorIgnoredApps({u"\uFF5E"_s, u"b"_s});
    manager->configure(*settings);
    defaults.writes.clear();
    for (const QString& action : {kPort, kProcess, kPort, kProcess})
        EXPECT_TRUE(respond({{kPortKey, 8080}, {kPidKey, 42}, {kProcessNameKey, late}}, action));
    EXPECT_TRUE(respond({{kProcessNameKey, u"B"_s}}, kProcess));
    EXPECT_EQ(settings->monitorIgnoredPorts(), (QList<qint64>{3000, 8080, 9000}));
    EXPECT_EQ(settings->conflictIgnoredPorts(), (QList<qint64>{8080, 1}));
    EXPECT_EQ(settings->monitorIgnoredApps(), (QStringList{u"B"_s, u"b"_s, u"\uFF5E"_s, late}));
    EXPECT_EQ(settings->conflictIgnoredApps(), (QStringList{u"B"_s, late}));
    EXPECT_EQ(defaults.writes.size(), 5U);
    EXPECT_EQ(handled, QStringList(4, late + u" 8080 42"_s) << u"B -1 -1"_s);
}

TEST_F(PortNotificationManagerTest, DoesOnlyWhatTheAlertKnowsEnoughFor) {
    const UserInfo whole{{kPortKey, 1}, {kPidKey, 42}, {kProcessNameKey, u"a"_s}};
    const UserInfo wrong{{kPortKey, u"1"_s}, {kPidKey, u"42"_s}, {kProcessNameKey, 7}};
    manager->configure(*settings);
    for (const QString& action : {kPort, kProcess, u"default"_s, QString()})
        EXPECT_TRUE(respond(wrong, action));
    settings.reset();
    for (const QString& action : {kPort, kProcess, u"kill_process"_s})
        EXPECT_TRUE(respond(whole, action));
    EXPECT_EQ(handled, QStringList());
    notifications.observe(kConflictHandled, &notifications, [this](const UserInfo& info) {
        if (info.integer(kPortKey))
            manager.reset();
    });
    for (const UserInfo& info : {wrong, UserInfo{{kPidKey, (1LL << 32) + 7}}, whole})
        EXPECT_TRUE(respond(info, kKill));
    EXPECT_EQ(handled, (QStringList{u" -1 -1"_s, u" -1 4294967303"_s, u"a 1 42"_s}));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !pinner.killed().empty(); }));
    EXPECT_THAT(pinner.killed(), ElementsAre(42));
}

TEST_F(PortNotificationManagerTest, AKillIsForTheProcessThatTheAlertIsAbout) {
    manager->configure(*settings);
    for (const qint64 start : {6, 8, 7}) // one of which has the id now
        EXPECT_TRUE(respond({{kPortKey, 1}, {kPidKey, 42}, {kStartTimeKey, start}}, kKill));
    EXPECT_TRUE(respond({{kPortKey, 9}, {kPidKey, 43}}, kKill)); // which holds another port
    manager.reset();
    inventory.reset(); // which waits for the kills
    EXPECT_THAT(pinner.killed(), ElementsAre(42));
}

TEST_F(PortNotificationManagerTest, AlertsGoWithTheirProcessOrTheirConflict) {
    const auto notify = [this](std::int64_t port, const ProcessIdentity& process) {
        manager->notifyConflict(port, u"node"_s, {process, ForceQuitObstacle::none});
        return alerts.requests.back().identifier;
    };
    const QString first = notify(3000, {42, 7});
    const QString second = notify(4000, {42, 7});
    manager->notifyPortActivity(3000, u"node"_s, {{42, 7}, ForceQuitObstacle::none});
    const QString activity = alerts.requests.back().identifier;
    const QString other = notify(3000, {43, 1});
    notify(3000, {0});
    processEnds.end(42);
    processEnds.end(42);
    EXPECT_THAT(alerts.removed, ElementsAre(first, second, activity));
    EXPECT_EQ(handled, (QStringList{u"node 3000 42"_s, u"node 4000 42"_s}));

    // Handled elsewhere: what is said has to fit.
    alerts.removed.clear();
    for (const UserInfo& info :
         {UserInfo{{kPortKey, 3001}}, UserInfo{{kPidKey, 42}},
          UserInfo{{kStartTimeKey, 2}, {kPidKey, 43}},
          UserInfo{{kPortKey, 3000}, {kPidKey, 43}, {kProcessNameKey, u"nod"_s}}})
        notifications.post(kConflictHandled, info);
    EXPECT_THAT(alerts.removed, ElementsAre());
    notifications.post(
        kConflictHandled,
        {{kPortKey, 3000}, {kPidKey, 43}, {kStartTimeKey, 1}, {kProcessNameKey, u"NODE"_s}});
    EXPECT_THAT(alerts.removed, ElementsAre(other));

    // Somebody else got the id before the watch could begin.
    alerts.removed.clear();
    const QString late = notify(3000, {43, 0});
    EXPECT_TRUE(QTest::qWaitFor([&] { return alerts.removed == QStringList(late); }));
    EXPECT_EQ(handled.last(), u"node 3000 43"_s);
}

TEST_F(PortNotificationManagerTest, WatchesABoundedNumberOfProcesses) {
    pinner.others = FakePinnedState();
    for (ProcessId pid = 100; pid < 500; ++pid)
        manager->notifyPortActivity(1, u"a"_s, {{pid, 1}, ForceQuitObstacle::none});
    EXPECT_EQ(processEnds.count(), PortNotificationManager::kMostStanding);
    processEnds.end(100);
    processEnds.end(499);
    EXPECT_THAT(alerts.removed, ElementsAre(alerts.requests.back().identifier));
    manager.reset();
    EXPECT_EQ(processEnds.count(), 0U);
}

} // namespace
} // namespace zenlot
