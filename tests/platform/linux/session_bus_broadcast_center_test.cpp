#include "platform/fake_broadcast_center.h"
#include "platform/linux/session_bus_broadcast_center.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/types.h>

#include <csignal>
#include <memory>
#include <optional>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

const QString kName = u"dev.quorvane.zenlot.portsUpdated"_s;
const QString kOtherName = u"dev.quorvane.zenlot.conflict.3000"_s;
const QString kPath = u"/dev/quorvane/zenlot/broadcast"_s;
const QString kInterface = u"dev.quorvane.zenlot.Broadcast"_s;
const QString kMember = u"Posted"_s;

// A bus of the test's own.
class PrivateBus {
  public:
    PrivateBus() {
        daemon_.start(u"dbus-daemon"_s,
                      {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--print-address"_s,
                       u"--address=unix:tmpdir="_s + folder_.path()});
        while (!daemon_.canReadLine() && daemon_.waitForReadyRead(10'000)) {
        }
        address_ = QString::fromUtf8(daemon_.readLine()).trimmed();
    }

    ~PrivateBus() {
        for (const QString& name : std::as_const(connections_))
            QDBusConnection::disconnectFromBus(name);
        stop();
    }

    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;

    const QString& address() const { return address_; }

    QDBusConnection connect() {
        const QString name = u"private bus %1"_s.arg(connections_.size());
        connections_.append(name);
        return QDBusConnection::connectToBus(address_, name);
    }

    void pause() const { ::kill(static_cast<pid_t>(daemon_.processId()), SIGSTOP); }
    void resume() const { ::kill(static_cast<pid_t>(daemon_.processId()), SIGCONT); }
    void stop() {
        daemon_.kill();
        daemon_.waitForFinished();
    }

  private:
    QTemporaryDir folder_;
    QProcess daemon_;
    QString address_;
    QStringList connections_;
};

class SessionBusBroadcastCenterTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(receiver.isConnected()) << qPrintable(bus.address()); }

    BroadcastCenter::Handler record() {
        return [this](const QString& name) { heard.append(name); };
    }

    void emitSignal(const QString& path, const QString& interface, const QString& member,
                    const QVariantList& arguments) {
        QDBusMessage signal = QDBusMessage::createSignal(path, interface, member);
        signal.setArguments(arguments);
        sender.send(signal);
    }

    // What another connection posts after this meets the receiver's rules: the bus has worked on
    // them before it answers.
    void letRulesArrive() {
        receiver.call(QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s,
                                                     u"/org/freedesktop/DBus"_s,
                                                     u"org.freedesktop.DBus"_s, u"GetId"_s));
    }

    bool waitForSignals(qsizetype count) {
        return QTest::qWaitFor([&] { return heard.size() >= count; });
    }

    // Posts a last name and waits for it: what `poster` sent before has arrived, or never will.
    void settle(BroadcastCenter& observer, BroadcastCenter& poster) {
        const QString last = u"dev.quorvane.zenlot.last"_s;
        QObject listener;
        bool isSettled = false;
        observer.observe(last, &listener, [&isSettled](const QString&) { isSettled = true; });
        letRulesArrive();
        poster.post(last);
        ASSERT_TRUE(QTest::qWaitFor([&isSettled] { return isSettled; }));
    }

    // What the bus itself filters by, for the receiver's connection; none when it does not tell.
    std::optional<QStringList> matchRules() {
        qDBusRegisterMetaType<QMap<QString, QStringList>>();
        const QDBusReply<QMap<QString, QStringList>> reply =
            sender.call(QDBusMessage::createMethodCall(
                u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
                u"org.freedesktop.DBus.Debug.Stats"_s, u"GetAllMatchRules"_s));
        if (!reply.isValid())
            return std::nullopt;
        return reply.value().value(receiver.baseService()).filter(kInterface);
    }

    PrivateBus bus;
    QDBusConnection receiver = bus.connect();
    QDBusConnection sender = bus.connect();
    QStringList heard;
    std::unique_ptr<QObject> context = std::make_unique<QObject>();
    std::unique_ptr<BroadcastCenter> center = std::make_unique<SessionBusBroadcastCenter>(receiver);
};

// What every center promises, kept by the fake as well.
class BroadcastCenterContract : public SessionBusBroadcastCenterTest,
                                public testing::WithParamInterface<bool> {
  protected:
    BroadcastCenterContract() {
        if (GetParam())
            center = std::make_unique<FakeBroadcastCenter>();
    }

    void settle() { SessionBusBroadcastCenterTest::settle(*center, *center); }
};

INSTANTIATE_TEST_SUITE_P(Centers, BroadcastCenterContract, testing::Bool(),
                         [](const auto& kind) { return kind.param ? "Fake" : "SessionBus"; });

TEST_P(BroadcastCenterContract, ReachesEveryObserverOfTheNameAndThePosterItself) {
    center->observe(kName, context.get(), record());
    center->observe(kName, context.get(), record());
    center->observe(kOtherName, context.get(), record());
    center->post(kName);
    center->post(kName + u"x"_s);
    EXPECT_THAT(heard, IsEmpty()) << "post() must not call handlers itself";
    settle();
    center->post(kOtherName);
    settle();
    EXPECT_THAT(heard, ElementsAre(kName, kName, kOtherName));
}

TEST_P(BroadcastCenterContract, RegistrationsEndWithTheirContextOrTheCenter) {
    QObject survivor;
    center->observe(kName, context.get(), [this](const QString& name) {
        heard.append(name);
        context.reset();
    });
    center->observe(kName, &survivor, record());
    center->post(kName);
    settle();
    center->post(kName);
    settle();
    EXPECT_EQ(heard.size(), 3);
    center->post(kName);
    center.reset();
    SessionBusBroadcastCenter next(receiver);
    SessionBusBroadcastCenterTest::settle(next, next);
    EXPECT_EQ(heard.size(), 3);
}

TEST_F(SessionBusBroadcastCenterTest, HearsOtherConnectionsAndLosesNothingOfABurst) {
    center->observe(kName, context.get(), record());
    letRulesArrive();
    SessionBusBroadcastCenter other(sender);
    for (int post = 0; post < 1000; ++post)
        other.post(kName);
    settle(*center, other);
    EXPECT_EQ(heard.size(), 1000);
}

TEST_F(SessionBusBroadcastCenterTest, HearsOtherProgramsInTheAgreedForm) {
    const QString program = QStandardPaths::findExecutable(u"dbus-send"_s);
    ASSERT_FALSE(program.isEmpty()) << "dbus-send is not installed";
    center->observe(kName, context.get(), record());
    letRulesArrive();
    const QStringList arguments{u"--bus="_s + bus.address(), u"--type=signal"_s, kPath,
                                kInterface + u'.' + kMember, u"string:"_s + kName};
    ASSERT_EQ(QProcess::execute(program, arguments), 0);
    ASSERT_TRUE(waitForSignals(1));
    EXPECT_THAT(heard, ElementsAre(kName));
}

TEST_F(SessionBusBroadcastCenterTest, IgnoresWhatIsNotABroadcastOfTheName) {
    center->observe(kName, context.get(), record());
    letRulesArrive();
    emitSignal(kPath, kInterface, kMember, {kOtherName});
    emitSignal(kPath, kInterface, kMember, {QString(1'000'000, u'x')});
    emitSignal(kPath, kInterface, kMember, {QString()});
    emitSignal(kPath, kInterface, kMember, {});
    emitSignal(kPath, kInterface, kMember, {42});
    emitSignal(kPath, kInterface, kMember, {QStringList{kName}});
    emitSignal(kPath, kInterface, kMember, {QVariant::fromValue(QDBusVariant(kName))});
    emitSignal(kPath, kInterface, kMember, {kName, kName});
    emitSignal(kPath, kInterface, u"Other"_s, {kName});
    emitSignal(kPath, u"org.example.Broadcast"_s, kMember, {kName});
    emitSignal(u"/org/example"_s, kInterface, kMember, {kName});
    // Sent to one receiver by name, a signal passes the bus without any rule.
    for (const QVariantList& arguments : {QVariantList{kOtherName}, {kName, kName}, {42}, {}}) {
        QDBusMessage signal =
            QDBusMessage::createTargetedSignal(receiver.baseService(), kPath, kInterface, kMember);
        signal.setArguments(arguments);
        sender.send(signal);
    }
    SessionBusBroadcastCenter other(sender);
    settle(*center, other);
    EXPECT_THAT(heard, IsEmpty());
    emitSignal(kPath, kInterface, kMember, {kName});
    EXPECT_TRUE(waitForSignals(1));
}

TEST_F(SessionBusBroadcastCenterTest, LetsTheBusFilterByNameAndWithdrawsTheFilter) {
    center->observe(kName, context.get(), record());
    center->observe(kName, context.get(), record());
    letRulesArrive();
    const std::optional<QStringList> rules = matchRules();
    ASSERT_TRUE(rules) << "this bus does not tell its rules";
    ASSERT_EQ(rules->size(), 1);
    EXPECT_TRUE(rules->front().contains(u"arg0='%1'"_s.arg(kName))) << qPrintable(rules->front());
    context.reset();
    EXPECT_TRUE(QTest::qWaitFor([this] { return matchRules().value_or(QStringList()).isEmpty(); }));
}

TEST_F(SessionBusBroadcastCenterTest, ABusThatDoesNotAnswerDelaysButLosesNothing) {
    bus.pause();
    center->observe(kName, context.get(), record());
    center->observe(kOtherName, context.get(), record());
    bus.resume();
    center->post(kName);
    center->post(kOtherName);
    settle(*center, *center);
    EXPECT_THAT(heard, ElementsAre(kName, kOtherName));
}

TEST_F(SessionBusBroadcastCenterTest, IsInertWithoutABus) {
    bus.stop();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !receiver.isConnected(); }));
    SessionBusBroadcastCenter nowhere(QDBusConnection(u"no such connection"_s));
    for (BroadcastCenter* each : {center.get(), static_cast<BroadcastCenter*>(&nowhere)}) {
        each->observe(kName, context.get(), record());
        each->post(kName);
    }
    QCoreApplication::processEvents();
    EXPECT_THAT(heard, IsEmpty());
}

} // namespace
} // namespace zenlot
