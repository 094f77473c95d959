#include "platform/linux/freedesktop_user_notification_center.h"
#include "support/private_bus.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QTest>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using Error = std::optional<UserNotificationError>;

const QString kService = u"org.freedesktop.Notifications"_s;
const QString kServerPath = u"/org/freedesktop/Notifications"_s;

// The service of a desktop, as the test wants it.
class ScriptedServer final : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

  public:
    explicit ScriptedServer(const QDBusConnection& connection) : bus(connection) {
        bus.registerObject(kServerPath, this, QDBusConnection::ExportAllSlots);
        bus.registerService(kService);
    }
    ~ScriptedServer() override {
        bus.unregisterService(kService);
        bus.unregisterObject(kServerPath);
    }
    void invoke(uint id, const QString& key) const {
        bus.send(QDBusMessage::createSignal(kServerPath, kService, u"ActionInvoked"_s)
                 << id << key);
    }
    // Answers what was asked while it was silent.
    void wakeUp() {
        isSilent = false;
        for (const QDBusMessage& call : std::exchange(unanswered, {}))
            bus.send(call.member() == u"Notify"_s ? call.createReply(++lastId)
                                                  : call.createReply(capabilities));
    }

    QDBusConnection bus;
    QStringList capabilities;
    bool isSilent{false};
    QString keyBeforeReply; // an action that is chosen before the number of its alert is told
    int questions{0};
    uint lastId{0};
    QList<QVariantList> alerts; // the arguments of each
    QList<uint> closed;
    QList<QDBusMessage> unanswered;

  public Q_SLOTS:
    QStringList GetCapabilities(const QDBusMessage& call) { // NOLINT: the name is agreed
        ++questions;
        postpone(call);
        return capabilities;
    }
    uint Notify(const QString&, uint replaced, const QString&, const QString&, // NOLINT
                const QString&, const QStringList&, const QVariantMap&, int,
                const QDBusMessage& call) {
        alerts.append(call.arguments());
        alerts.last()[6] = qdbus_cast<QVariantMap>(alerts.last()[6]);
        postpone(call);
        const uint id = replaced != 0 || isSilent ? replaced : ++lastId;
        if (!keyBeforeReply.isEmpty())
            invoke(id, keyBeforeReply);
        return id;
    }

    void CloseNotification(uint id) { // NOLINT
        closed.append(id);
        bus.send(QDBusMessage::createSignal(kServerPath, kService, u"NotificationClosed"_s)
                 << id << 3U);
    }

  private:
    void postpone(const QDBusMessage& call) {
        call.setDelayedReply(isSilent);
        if (isSilent)
            unanswered.append(call);
    }
};

class UserNotificationCenterTest : public testing::Test {
  protected:
    UserNotificationCenterTest() {
        center.setResponder([this](const QString& alert, const QString& action) {
            responses.append(alert + u' ' + action);
        });
    }

    static UserNotificationRequest request(const QString& identifier, const QString& body = {}) {
        return {
            identifier,
            {u"<Port>\u202E"_s + QChar(0xD83D), body, {{u"KILL"_s, u"Kill"_s}, {u"B"_s, u"b"_s}}}};
    }
    QFuture<Error> add(const QString& identifier) { return center.add(request(identifier)); }
    template <class Answer>
    static Answer answerOf(const QFuture<Answer>& future) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return future.isFinished(); }));
        return future.isFinished() ? future.result() : Answer{};
    }
    static bool isShown(const QFuture<Error>& future) { return !answerOf(future).has_value(); }
    void expectResponses(const QStringList& expected) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return responses.size() >= expected.size(); }));
        EXPECT_EQ(std::exchange(responses, {}), expected);
    }

    PrivateBus bus;
    QDBusConnection client = bus.connect(u"client"_s);
    QStringList responses;
    FreedesktopUserNotificationCenter center{client};
};

TEST_F(UserNotificationCenterTest, AlertsSayWhatTheServiceUnderstands) {
    ScriptedServer server(bus.connect(u"server"_s));
    const auto sent = [&](const QStringList& capabilities) {
        server.capabilities = capabilities;
        FreedesktopUserNotificationCenter fresh(client);
        const auto alert = request(u"1"_s, u"<b>&\n\u2066\uFFFE"_s + QChar::Null);
        return isShown(fresh.add(alert)) ? server.alerts.takeLast() : QVariantList{};
    };
    QVariantMap hints{{u"desktop-entry"_s, u"dev.quorvane.zenlot"_s},
                      {u"urgency"_s, QVariant::fromValue<uchar>(1)}};
    EXPECT_EQ(
        sent({u"body-markup"_s}),
        (QVariantList{u"Zenlot"_s, 0U, u"dev.quorvane.zenlot"_s, u"<Port>\uFFFD\uFFFD"_s,
                      u"&lt;b&gt;&amp;\uFFFD\uFFFD\uFFFD\uFFFD"_s, QStringList(), hints, -1}));
    hints.insert(u"sound-name"_s, u"dialog-information"_s);
    EXPECT_EQ(sent({u"actions"_s, u"sound"_s}).mid(4),
              (QVariantList{u"<b>&\uFFFD\uFFFD\uFFFD\uFFFD"_s,
                            QStringList{u"KILL"_s, u"Kill"_s, u"B"_s, u"b"_s}, hints, -1}));

    EXPECT_TRUE(isShown(center.add(request(u"1"_s, u"\U0001F600"_s.repeated(999) + u"x — end"_s))));
    EXPECT_EQ(server.alerts.takeLast().at(4),
              u"\U0001F600"_s.repeated(192) + u'…' + u"\U0001F600"_s.repeated(60) + u"x — end"_s);
}

TEST_F(UserNotificationCenterTest, ResponsesComeFromTheServiceAndForOurOpenAlertsOnly) {
    ScriptedServer server(bus.connect(u"server"_s));
    server.keyBeforeReply = u"EARLY"_s;
    EXPECT_TRUE(isShown(add(u"a"_s)));
    server.keyBeforeReply.clear();
    const QFuture<Error> first = add(u"b"_s);
    EXPECT_TRUE(isShown(add(u"b"_s)) && isShown(first)); // it replaces what had no number yet
    EXPECT_EQ(server.alerts.last().at(1), 2U);

    QDBusConnection stranger = bus.connect(u"stranger"_s);
    stranger.send(QDBusMessage::createSignal(kServerPath, kService, u"ActionInvoked"_s)
                  << 1U << u"NO"_s);
    const auto closing = QDBusMessage::createSignal(kServerPath, kService, u"NotificationClosed"_s)
                         << 1U << 2U;
    stranger.send(closing);
    EXPECT_TRUE(stranger.registerService(u"a.b"_s)); // the bus has worked on the signals before
    server.invoke(77, u"OTHERS"_s);
    server.invoke(1, u"TWICE"_s);
    server.invoke(1, u"TWICE"_s);
    server.bus.send(closing);
    server.invoke(1, u"LATE"_s);
    server.invoke(2, u"LAST"_s);
    expectResponses({u"a EARLY"_s, u"a TWICE"_s, u"a TWICE"_s, u"b LAST"_s});

    // Of too many the oldest is forgotten.
    for (qsizetype count = 0; count < NotificationServer::kMost; ++count)
        EXPECT_TRUE(isShown(add(QString::number(count))));
    server.invoke(2, u"FORGOTTEN"_s);
    server.invoke(3, u"KEPT"_s);
    expectResponses({u"0 KEPT"_s});
    EXPECT_EQ(server.questions, 1);
}

TEST_F(UserNotificationCenterTest, AlertsAreTakenBackWhereverTheyAre) {
    const QFuture<Error> queued = add(u"queued"_s);
    center.remove(u"queued"_s); // before anybody has told whether there is a service
    EXPECT_FALSE(isShown(queued));
    EXPECT_FALSE(isShown(add(u"nobody"_s))); // which it is only now
    ScriptedServer server(bus.connect(u"server"_s));
    EXPECT_TRUE(isShown(add(u"shown"_s)) && isShown(add(u"kept"_s)));
    center.remove(u"shown"_s);
    center.remove(u"shown"_s);
    center.remove(u"unheard of"_s);
    server.isSilent = true;
    const QFuture<Error> sent = add(u"sent"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return server.alerts.size() == 3; }));
    center.remove(u"sent"_s);
    server.wakeUp();
    EXPECT_TRUE(isShown(sent));
    for (const uint id : {1U, 3U, 2U})
        server.invoke(id, u"KEY"_s);
    expectResponses({u"kept KEY"_s});
    EXPECT_TRUE(QTest::qWaitFor([&] { return server.closed.size() == 2; }));
    EXPECT_EQ(server.closed, (QList<uint>{1, 3}));
}

TEST_F(UserNotificationCenterTest, FollowsTheServiceThroughItsLife) {
    const auto status = [this] {
        const AuthorizationAnswer answer = answerOf(center.requestAuthorization());
        const UserNotificationSettings settings = answerOf(center.notificationSettings());
        return QList{int{answer.isGranted}, int{answer.error.has_value()},
                     static_cast<int>(settings.authorizationStatus),
                     static_cast<int>(settings.alertSetting),
                     static_cast<int>(settings.soundSetting)};
    };
    EXPECT_EQ(status(), (QList{0, 0, 1, 0, 0}));
    EXPECT_FALSE(isShown(add(u"nobody"_s)));

    auto first = std::make_unique<ScriptedServer>(bus.connect(u"first"_s));
    EXPECT_EQ(status(), (QList{1, 0, 2, 2, 0}));
    EXPECT_TRUE(isShown(add(u"old"_s)));
    first->isSilent = true;
    const QFuture<Error> lost = add(u"lost"_s);
    FreedesktopUserNotificationCenter newcomer(client);
    const QFuture<Error> inherited = newcomer.add(request(u"inherited"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return first->unanswered.size() == 2; }));
    const QDBusConnection formerly = first->bus;
    const QDBusMessage late = first->unanswered.takeFirst().createReply(2U);
    first.reset();
    EXPECT_FALSE(isShown(lost));
    formerly.send(late);

    ScriptedServer second(bus.connect(u"second"_s));
    second.capabilities = {u"sound"_s};
    EXPECT_TRUE(isShown(inherited));
    EXPECT_EQ(status(), (QList{1, 0, 2, 2, 2}));
    EXPECT_TRUE(isShown(add(u"new"_s)));
    second.invoke(1, u"OLD"_s); // it belongs to the newcomer now
    second.invoke(2, u"NEW"_s);
    expectResponses({u"new NEW"_s});
}

} // namespace
} // namespace zenlot

#include "freedesktop_user_notification_center_test.moc"
