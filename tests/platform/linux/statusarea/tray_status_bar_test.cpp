#include "platform/linux/session_bus.h"
#include "platform/linux/statusarea/tray_status_bar.h"

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QTest>
#include <QThread>
#include <gmock/gmock.h>

#include <atomic>
#include <mutex>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

const QString kService = u"org.kde.StatusNotifierWatcher"_s;
const QString kPath = u"/StatusNotifierWatcher"_s;

// A panel that keeps the list of items. The toolkit waits for its answers, so it has a thread.
class Panel final : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)

  public:
    Panel() {
        bus_.registerObject(kPath, this, QDBusConnection::ExportAllContents);
        moveToThread(&thread_);
        thread_.start();
    }
    ~Panel() override {
        QMetaObject::invokeMethod(
            this, [this, main = QThread::currentThread()] { moveToThread(main); },
            Qt::BlockingQueuedConnection);
        thread_.quit();
        thread_.wait();
        QDBusConnection::disconnectFromBus(bus_.name());
    }

    void begin() { EXPECT_TRUE(bus_.registerService(kService)); }
    void end() {
        bus_.unregisterService(kService);
        registrations = 0;
    }
    void setHost(bool isThere) {
        hasHost_ = isThere;
        QMetaObject::invokeMethod(this, isThere ? &Panel::StatusNotifierHostRegistered
                                                : &Panel::StatusNotifierHostUnregistered);
    }
    bool hasHost() const { return hasHost_; }

    // The connection of the item that came last.
    QString item() const {
        const std::lock_guard lock(mutex_);
        return item_;
    }

    std::atomic<int> registrations{0};

  public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& /*service*/) {
        const std::lock_guard lock(mutex_);
        item_ = message().service();
        ++registrations;
    }

  Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierHostUnregistered();

  private:
    QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"panel"_s);
    std::atomic<bool> hasHost_{false};
    mutable std::mutex mutex_;
    QString item_;
    QThread thread_;
};

// Everything in one test: the toolkit settles for a kind of tray once in a process.
TEST(TrayStatusBarTest, ItemsAppearWithThePanelAndReturnWithIt) {
    SessionBus bus;
    TrayStatusBar bar(bus, 200ms);
    QObject context;
    QList<bool> told;
    bar.observeAvailability(&context, [&] { told.append(bar.isAvailable()); });
    int clicks = 0;
    const auto item = bar.makeStatusItem([&](std::optional<QRect> place) {
        ++clicks;
        EXPECT_TRUE(place);
    });
    item->setImage({u":/none.svg"_s, u"none"_s});
    item->setToolTip(u"Zenlot"_s);
    item->setMenu({{.title = u"Open"_s}});

    // The program started before the panel.
    EXPECT_TRUE(bar.isAvailable());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bar.isAvailable(); }, 30000));
    Panel panel;
    panel.begin();
    panel.setHost(true);
    ASSERT_TRUE(QTest::qWaitFor([&] { return panel.registrations == 1; }, 30000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.isAvailable(); }));

    QDBusConnection other = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"other"_s);
    other.asyncCall(QDBusMessage::createMethodCall(panel.item(), u"/StatusNotifierItem"_s,
                                                   u"org.kde.StatusNotifierItem"_s, u"Activate"_s)
                    << 1 << 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return clicks == 1; }));
    panel.end(); // for a moment only
    panel.begin();
    EXPECT_TRUE(QTest::qWaitFor([&] { return panel.registrations == 1; }, 30000));
    panel.setHost(false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bar.isAvailable(); }, 30000));
    panel.setHost(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return bar.isAvailable(); }, 30000));
    EXPECT_THAT(told, testing::ElementsAre(false, true, false, true));
    QDBusConnection::disconnectFromBus(other.name());
}

} // namespace
} // namespace zenlot

#include "tray_status_bar_test.moc"
