#include "platform/fake_broadcast_center.h"
#include "platform/linux/session_bus_broadcast_center.h"
#include "support/private_bus.h"

#include <QDBusMessage>
#include <QTest>
#include <gtest/gtest.h>

#include <csignal>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using enum BroadcastCenter::Meaning;

const QString kPortsUpdatedName = u"dev.quorvane.zenlot.portsUpdated"_s;
const QString kLast = u"dev.quorvane.zenlot.conflict.3000"_s;
const QString kBroadcastPath = u"/dev/quorvane/zenlot/broadcast"_s;
const QString kInterface = u"dev.quorvane.zenlot.Broadcast"_s;

// Two connections to a bus of the test's own.
class BroadcastCenterTest : public testing::Test {
  protected:
    // What was sent before the last name has then arrived, or never will.
    bool waitForLast() {
        return QTest::qWaitFor([this] { return heard.contains(kLast); });
    }

    PrivateBus bus;
    QDBusConnection receiver = bus.connect(u"receiver"_s);
    QDBusConnection sender = bus.connect(u"sender"_s);
    QObject context;
    QStringList heard;
    BroadcastCenter::Handler record = [this](const QString& name) { heard.append(name); };
};

TEST_F(BroadcastCenterTest, ReachesEveryObserverOfTheNameUntilItsContextEnds) {
    SessionBusBroadcastCenter real(receiver);
    FakeBroadcastCenter fake;
    for (BroadcastCenter* center : std::initializer_list<BroadcastCenter*>{&real, &fake}) {
        heard.clear();
        auto* brief = new QObject(&context);
        center->observe(kPortsUpdatedName, readAnew, brief, [this, brief](const QString& name) {
            delete brief;
            heard.append(name);
        });
        center->observe(kPortsUpdatedName, readAnew, &context, record);
        center->observe(kLast, readAnew, &context, record);
        for (const QString& name :
             {kPortsUpdatedName, kPortsUpdatedName + u"x"_s, kPortsUpdatedName, kLast})
            center->post(name);
        EXPECT_TRUE(heard.isEmpty()) << "post() must not call handlers itself";
        EXPECT_TRUE(waitForLast());
        EXPECT_EQ(heard,
                  (QStringList{kPortsUpdatedName, kPortsUpdatedName, kPortsUpdatedName, kLast}));
    }
}

TEST_F(BroadcastCenterTest, HearsOthersInTheAgreedFormAndNoOther) {
    SessionBusBroadcastCenter center(receiver);
    center.observe(kPortsUpdatedName, readAnew, &context, record);
    center.observe(kLast, readAnew, &context, record);
    // The bus has worked on the rules before it answers.
    receiver.call(QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/"_s,
                                                 u"org.freedesktop.DBus"_s, u"GetId"_s));
    // Sent to one receiver by name, a signal passes the bus without any rule.
    auto wrong = QDBusMessage::createTargetedSignal(receiver.baseService(), kBroadcastPath,
                                                    kInterface, u"Posted"_s);
    for (const QVariantList& arguments :
         {QVariantList{u"x"_s}, {}, {42}, {kPortsUpdatedName, kPortsUpdatedName}}) {
        wrong.setArguments(arguments);
        sender.send(wrong);
    }
    for (const QString& name : {kPortsUpdatedName, kPortsUpdatedName, kLast})
        sender.send(QDBusMessage::createSignal(kBroadcastPath, kInterface, u"Posted"_s) << name);
    EXPECT_TRUE(waitForLast());
    EXPECT_EQ(heard, (QStringList{kPortsUpdatedName, kPortsUpdatedName, kLast}));
}

// Whoever may make alerts with a button that ends a process.
TEST_F(BroadcastCenterTest, EventsCountFromTheOwnerOfTheNameAlone) {
    const QString source = u"dev.quorvane.zenlot.Monitor"_s;
    const QString event = u"dev.quorvane.zenlot.conflict.8080"_s;
    SessionBusBroadcastCenter center(receiver, source);
    center.observe(event, BroadcastCenter::Meaning::event, &context, record);
    center.observe(kLast, readAnew, &context, record);
    QDBusConnection monitor = bus.connect(u"monitor"_s);
    const auto post = [](QDBusConnection& from, const QString& name) {
        from.send(QDBusMessage::createSignal(kBroadcastPath, kInterface, u"Posted"_s) << name);
    };
    // Nobody has the name, so anybody may be the monitor.
    post(sender, event);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !heard.isEmpty(); }));
    EXPECT_EQ(heard, QStringList{event});

    heard.clear();
    ASSERT_TRUE(monitor.registerService(source));
    ASSERT_TRUE(waitForLast()) << "what is to be read anew is read when the monitor comes";
    post(sender, event);
    post(sender, kLast);
    post(monitor, event);
    post(monitor, event);
    EXPECT_TRUE(QTest::qWaitFor([&] { return heard.count(event) >= 2; }));
    EXPECT_EQ(heard, (QStringList{kLast, kLast, event, event}));

    heard.clear();
    ASSERT_TRUE(monitor.unregisterService(source));
    ASSERT_TRUE(waitForLast()) << "and when it goes";
}

TEST_F(BroadcastCenterTest, NeverWaitsForABusAndNeedsNone) {
    SessionBusBroadcastCenter nowhere(QDBusConnection(u"none"_s));
    nowhere.observe(kLast, readAnew, &context, record);
    nowhere.post(kLast);
    SessionBusBroadcastCenter center(receiver);
    ::kill(bus.processId(), SIGSTOP);
    center.observe(kLast, readAnew, &context, record);
    ::kill(bus.processId(), SIGCONT);
    center.post(kLast);
    EXPECT_TRUE(waitForLast());
}

} // namespace
} // namespace zenlot
