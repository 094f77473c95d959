#include "platform/linux/session_bus.h"
#include "platform/linux/windowsystem/portal_global_shortcut.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVirtualObject>
#include <QTest>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

const QString kPortal = u"org.freedesktop.portal.Desktop"_s;
const QString kPath = u"/org/freedesktop/portal/desktop"_s;
const QString kShortcuts = u"org.freedesktop.portal.GlobalShortcuts"_s;

// A portal whose user says yes.
class ScriptedPortal final : public QDBusVirtualObject {
  public:
    ScriptedPortal() {
        bus.registerVirtualObject(kPath, this, QDBusConnection::SubPath);
        bus.interface()->registerService(kPortal);
    }

    void press(const QString& inSession, const QString& shortcut, const QVariantMap& options = {}) {
        auto signal = QDBusMessage::createSignal(kPath, kShortcuts, u"Activated"_s);
        signal << QVariant::fromValue(QDBusObjectPath(inSession)) << shortcut << 12345ULL
               << options;
        bus.send(signal);
    }

    QString introspect(const QString& /*path*/) const override { return {}; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*bus*/) override {
        if (message.member() == "CreateSession"_L1) {
            const auto options = qdbus_cast<QVariantMap>(message.arguments().value(0));
            const QString caller = message.service().mid(1).replace(u'.', u'_');
            const auto path = [&](const QString& kind, const QString& token) {
                return kPath + kind + caller + u'/' + options.value(token).toString();
            };
            session = path(u"/session/"_s, u"session_handle_token"_s);
            auto answer =
                QDBusMessage::createSignal(path(u"/request/"_s, u"handle_token"_s),
                                           u"org.freedesktop.portal.Request"_s, u"Response"_s);
            bus.send(answer << 0U << QVariantMap());
        } else if (message.member() == "BindShortcuts"_L1) {
            bound = message;
            ++bindings;
        } else if (message.member() == "Close"_L1) {
            closed = message.path();
        }
        return true;
    }

    QDBusConnection bus =
        QDBusConnection::connectToBus(SessionBus::addressOfSession(), u"portal"_s);
    QString session;
    QDBusMessage bound;
    int bindings{0};
    QString closed;
};

TEST(PortalGlobalShortcutTest, WishesForTheCombinationAndHearsItsPresses) {
    ScriptedPortal portal;
    SessionBus bus;
    PortalGlobalShortcut shortcut(bus);
    int fired = 0;
    auto monitor = shortcut.install([&] { ++fired; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal.bindings == 1; }));
    EXPECT_EQ(portal.bound.signature(), u"oa(sa{sv})sa{sv}"_s);
    EXPECT_EQ(portal.bound.arguments().value(0).value<QDBusObjectPath>().path(), portal.session);
    QString identifier;
    QVariantMap properties;
    const auto list = portal.bound.arguments().value(1).value<QDBusArgument>();
    list.beginArray();
    list.beginStructure();
    list >> identifier >> properties;
    EXPECT_EQ(properties.value(u"preferred_trigger"_s), u"CTRL+ALT+SHIFT+p"_s);

    // A stranger may say the same.
    const QString stranger = u"stranger"_s;
    auto forged = QDBusMessage::createSignal(kPath, kShortcuts, u"Activated"_s);
    forged << QVariant::fromValue(QDBusObjectPath(portal.session)) << identifier << 1ULL
           << QVariantMap();
    QDBusConnection::connectToBus(SessionBus::addressOfSession(), stranger).send(forged);
    QDBusConnection(stranger).interface()->isServiceRegistered(kPortal);
    QDBusConnection::disconnectFromBus(stranger);
    portal.press(portal.session + u'x', identifier);
    portal.press(portal.session, identifier + u'x');
    portal.press(portal.session, identifier, {{u"activation_token"_s, u"a token"_s}});
    EXPECT_TRUE(QTest::qWaitFor([&] { return fired > 0; }));
    EXPECT_EQ(fired, 1);
    EXPECT_EQ(qEnvironmentVariable("XDG_ACTIVATION_TOKEN"), u"a token"_s);

    portal.bus.interface()->unregisterService(kPortal);
    portal.bus.interface()->registerService(kPortal);
    ASSERT_TRUE(QTest::qWaitFor([&] { return portal.bindings == 2; }));
    portal.press(portal.session, identifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return fired == 2; }));
    monitor.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return portal.closed == portal.session; }));
}

} // namespace
} // namespace zenlot
