// What keeps the program reachable, and in touch, over the end of its session bus.
#include "platform/linux/session_bus.h"
#include "platform/linux/session_bus_application_instance.h"
#include "platform/linux/session_bus_broadcast_center.h"
#include "support/qt_temporary_folder.h"

#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QProcess>
#include <QTest>
#include <gtest/gtest.h>

#include <future>

namespace zenlot {
namespace {

using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using Request = std::pair<QStringList, Activation>;

const QString kApplicationName = u"dev.quorvane.zenlot"_s;
const QString kApplicationPath = u"/dev/quorvane/zenlot"_s;
const QString kBroadcast = u"dev.quorvane.zenlot.portsUpdated"_s;
const QStringList kUris{u"port://8080"_s, u"port://x y"_s};
const Activation kActivation{u"id_TIME1"_s, u"a token"_s};

template <typename Condition>
bool waitFor(Condition condition) {
    return QTest::qWaitFor(condition, 20000);
}

class SessionBusTest : public testing::Test {
  protected:
    SessionBusTest() { startDaemon(); }
    ~SessionBusTest() override { stopDaemon(); }

    // It tells an identity with its address, which is another one after each start.
    void startDaemon() {
        daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s,
                                        u"--address=unix:path="_s + folder.path(u"bus"_s)});
        EXPECT_TRUE(waitFor([this] { return daemon.canReadLine(); }));
        address = QString::fromUtf8(daemon.readAll()).trimmed();
    }
    void stopDaemon() {
        daemon.kill();
        daemon.waitForFinished();
    }

    void record(ApplicationInstance& instance) {
        instance.setHandlers(&context, {[this](auto& with) {
                                            requests.append({{}, with});
                                        },
                                        [this](auto& uris, auto& with) {
                                            requests.append({uris, with});
                                        },
                                        [this](qint64 port, auto& with) {
                                            requests.append({{QString::number(port)}, with});
                                        }});
    }

    // The program started once more, beside the event loop that the first one answers from.
    StartOutcome startAgain(const QStringList& uris) {
        auto start = std::async(std::launch::async, [&] {
            SessionBus bus(address);
            return SessionBusApplicationInstance(bus, 20s).start(uris, kActivation);
        });
        EXPECT_TRUE(waitFor([&] { return start.wait_for(0s) == std::future_status::ready; }));
        return start.get();
    }

    QtTemporaryFolder folder;
    QProcess daemon;
    QString address;
    QObject context;
    QList<Request> requests;
};

TEST_F(SessionBusTest, OtherStartsAndDesktopsReachTheFirst) {
    SessionBus bus(address);
    SessionBusApplicationInstance first(bus);
    EXPECT_EQ(first.start({u"port://1"_s}, kActivation), StartOutcome::first);
    EXPECT_EQ(startAgain({}), StartOutcome::handedOver);
    EXPECT_EQ(startAgain(kUris), StartOutcome::handedOver);
    EXPECT_TRUE(requests.isEmpty());
    record(first);
    EXPECT_TRUE(waitFor([this] { return requests.size() == 3; })) << "what came before is kept";
    EXPECT_EQ(requests,
              (QList<Request>{{{u"port://1"_s}, {}}, {{}, kActivation}, {kUris, kActivation}}));

    SessionBus desktop(address);
    auto open = QDBusMessage::createMethodCall(kApplicationName, kApplicationPath,
                                               u"org.freedesktop.Application"_s, u"Open"_s);
    open << QStringList(100000, u"port://8080"_s)
         << QVariantMap{{u"activation-token"_s, QVariantList{1}}};
    desktop.connection().send(open);
    EXPECT_TRUE(waitFor([this] { return requests.size() == 4; }));
    EXPECT_EQ(requests[3], Request(QStringList(64, u"port://8080"_s), {}));

    for (const auto& [name, argument] : {std::pair(u"kill"_s, QVariant(3000LL)),
                                         {u"check-port"_s, u"x"_s},
                                         {u"check-port"_s, QVariant(3000LL)},
                                         {u"settings"_s, QVariant(0)}}) {
        auto act =
            QDBusMessage::createMethodCall(kApplicationName, kApplicationPath,
                                           u"org.freedesktop.Application"_s, u"ActivateAction"_s);
        act << name << QVariantList{argument} << QVariantMap();
        desktop.connection().send(act);
    }
    EXPECT_TRUE(waitFor([this] { return requests.size() == 6; }));
    EXPECT_EQ(requests[4], Request({u"3000"_s}, {}));
    EXPECT_EQ(requests[5], Request({u"zenlot:settings"_s}, {}));
    EXPECT_EQ(urisAmong({u"--settings"_s, u"port://1"_s, u"--quit"_s, u"x"_s, u"--quiet"_s}),
              (QStringList{u"zenlot:settings"_s, u"port://1"_s, u"zenlot:quit"_s}));
}

TEST_F(SessionBusTest, FirstThatHangsOrDiesKeepsNobodyWaiting) {
    struct Dying : QDBusVirtualObject {
        QString introspect(const QString& /*path*/) const override { return {}; }
        bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
            message.setDelayedReply(true);
            QDBusConnection::disconnectFromBus(bus.name());
            return true;
        }
    } dying;
    {
        QDBusConnection bus = QDBusConnection::connectToBus(address, u"dying"_s);
        bus.registerVirtualObject(kApplicationPath, &dying);
        ASSERT_TRUE(bus.registerService(kApplicationName));
    }
    EXPECT_EQ(startAgain(kUris), StartOutcome::first);

    SessionBus bus(address);
    SessionBusApplicationInstance hanging(bus);
    ASSERT_EQ(hanging.start({}, {}), StartOutcome::first);
    SessionBus other(address);
    EXPECT_EQ(SessionBusApplicationInstance(other, 50ms).start({}, {}), StartOutcome::notAnswered);
}

TEST_F(SessionBusTest, EverythingIsBackWhenTheBusIs) {
    stopDaemon();
    SessionBus bus(address);
    SessionBusApplicationInstance first(bus);
    EXPECT_EQ(first.start(kUris, {}), StartOutcome::alone);
    record(first);
    EXPECT_TRUE(waitFor([this] { return requests.size() == 1; }));
    SessionBusBroadcastCenter broadcasts(bus);
    int heard = 0;
    broadcasts.observe(kBroadcast, BroadcastCenter::Meaning::readAnew, &context,
                       [&](const QString&) { ++heard; });
    // What happened while the bus was away is past.
    broadcasts.observe(kBroadcast + u".3000"_s, BroadcastCenter::Meaning::event, &context,
                       [&](const QString&) { heard += 1000; });
    for (int round = 1; round < 3; ++round) {
        broadcasts.post(kBroadcast); // to nobody
        heard = 0;
        startDaemon();
        EXPECT_TRUE(waitFor([&] { return heard == 1; })) << "there may be news";
        SessionBus poster(address);
        SessionBusBroadcastCenter(poster.connection()).post(kBroadcast);
        EXPECT_TRUE(waitFor([&] { return heard == 2; }));
        EXPECT_EQ(startAgain(kUris), StartOutcome::handedOver);
        EXPECT_TRUE(waitFor([&] { return requests.size() == round + 1; }));
        stopDaemon();
        EXPECT_TRUE(waitFor([&] { return !bus.isConnected(); }));
    }
}

} // namespace
} // namespace zenlot
