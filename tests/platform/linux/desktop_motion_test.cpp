#include "platform/linux/desktop_motion.h"
#include "platform/linux/session_bus.h"
#include "support/private_bus.h"

#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QTest>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using Settings = QMap<QString, QVariantMap>;

// A desktop's portal, as far as settings go.
class Portal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

  public:
    explicit Portal(QDBusConnection bus) : bus_(std::move(bus)) {
        qDBusRegisterMetaType<Settings>();
        bus_.registerObject(u"/org/freedesktop/portal/desktop"_s, this,
                            QDBusConnection::ExportAllContents);
    }
    void start() { bus_.registerService(u"org.freedesktop.portal.Desktop"_s); }
    void stop() { bus_.unregisterService(u"org.freedesktop.portal.Desktop"_s); }

    Settings settings;

  public Q_SLOTS:
    QMap<QString, QVariantMap> ReadAll(const QStringList& groups) const {
        Settings answer;
        for (const QString& group : groups) {
            if (settings.contains(group))
                answer.insert(group, settings[group]);
        }
        return answer;
    }

  Q_SIGNALS:
    void SettingChanged(const QString& group, const QString& key, const QDBusVariant& value);

  private:
    QDBusConnection bus_;
};

TEST(DesktopMotionTest, FollowsWhatEachDesktopCallsIt) {
    PrivateBus bus;
    Portal portal(bus.connect(u"portal"_s));
    portal.settings = {{u"org.gnome.desktop.interface"_s, {{u"enable-animations"_s, false}}}};
    SessionBus session(bus.address());
    const DesktopMotion motion(session);
    EXPECT_FALSE(motion.isReduced());
    portal.start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return motion.isReduced(); }, 20'000));

    const struct {
        QString group;
        QString key;
        QVariant reduced;
        QVariant full;
    } desktops[] = {
        {u"org.gnome.desktop.interface"_s, u"enable-animations"_s, false, true},
        {u"org.freedesktop.appearance"_s, u"reduced-motion"_s, 1U, 0U},
        {u"org.kde.kdeglobals.KDE"_s, u"AnimationDurationFactor"_s, u"0"_s, u"0.7"_s},
    };
    for (const auto& [group, key, reduced, full] : desktops) {
        SCOPED_TRACE(group.toStdString());
        Q_EMIT portal.SettingChanged(group, key, QDBusVariant(reduced));
        EXPECT_TRUE(QTest::qWaitFor([&] { return motion.isReduced(); }, 20'000));
        Q_EMIT portal.SettingChanged(group, key, QDBusVariant(full));
        EXPECT_TRUE(QTest::qWaitFor([&] { return !motion.isReduced(); }, 20'000));
    }
    Q_EMIT portal.SettingChanged(u"org.freedesktop.appearance"_s, u"reduced-motion"_s,
                                 QDBusVariant(1U));
    EXPECT_TRUE(QTest::qWaitFor([&] { return motion.isReduced(); }, 20'000));
    portal.stop();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !motion.isReduced(); }, 20'000));
}

} // namespace
} // namespace zenlot

#include "desktop_motion_test.moc"
