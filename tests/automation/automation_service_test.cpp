#include "automation/automation_service.h"
#include "inventory/fake_process_tables.h"
#include "support/private_bus.h"

#include <QDBusPendingCall>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <csignal>
#include <semaphore>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

// A kernel that does not answer before it may.
class SlowTables final : public ProcessTables {
  public:
    mutable std::counting_semaphore<> mayAnswer{0};

    std::unique_ptr<ProcessSnapshot>
    beginSnapshot(std::optional<std::int64_t> port) const override {
        mayAnswer.acquire();
        return tables_.beginSnapshot(port);
    }

  private:
    FakeProcessTables tables_;
};

class AutomationServiceTest : public testing::Test {
  protected:
    AutomationService& start(AutomationTimes times) {
        AutomationService& service = service_.emplace(connection_, answers_, times);
        EXPECT_TRUE(service.start());
        return service;
    }
    ~AutomationServiceTest() override { tables.mayAnswer.release(kMany); }

    QDBusPendingCall ask(const QString& interface, const QString& method, const QVariant& what) {
        QDBusMessage call = QDBusMessage::createMethodCall(connection_.baseService(),
                                                           kAutomationPath, interface, method);
        return desktop_.asyncCall(call << what);
    }
    QDBusPendingCall checkPort() { return ask(kAutomationBusName, u"CheckPort"_s, qint64{3000}); }
    static bool wait(const std::function<bool()>& condition) {
        return QTest::qWaitFor(condition, 60000);
    }

    static constexpr int kMany = 10000;
    PrivateBus bus;
    SlowTables tables;

  private:
    QDBusConnection connection_ = bus.connect(u"service"_s);
    QDBusConnection desktop_ = bus.connect(u"desktop"_s);
    PortScanner scanner_{tables, [](std::uint16_t, AddressFamily) { return false; }};
    PortAnswers answers_{scanner_, SharedContainer(QString())};
    std::optional<AutomationService> service_;
};

TEST_F(AutomationServiceTest, StaysForOpenCallsAndServesOthersMeanwhile) {
    QSignalSpy finished(&start({.idle = 1ms, .farewell = 1ms}), &AutomationService::finished);
    const QDBusPendingCall open = checkPort();
    const QDBusPendingCall other =
        ask(u"org.gnome.Shell.SearchProvider2"_s, u"GetInitialResultSet"_s, QStringList{u"80"_s});
    ASSERT_TRUE(wait([&] { return other.isFinished(); }));
    EXPECT_EQ(other.reply().arguments().value(0), QStringList{u":80"_s});
    // Far beyond both times.
    QTimer later;
    later.setSingleShot(true);
    later.start(50ms);
    ASSERT_TRUE(wait([&] { return !later.isActive(); }));
    EXPECT_TRUE(finished.isEmpty());
    EXPECT_FALSE(open.isFinished());

    tables.mayAnswer.release();
    EXPECT_TRUE(wait([&] { return open.isFinished() && finished.size() == 1; }));
    EXPECT_FALSE(open.isError());
}

TEST_F(AutomationServiceTest, EndsWithItsBus) {
    QSignalSpy finished(&start({}), &AutomationService::finished);
    ::kill(bus.processId(), SIGTERM);
    EXPECT_TRUE(wait([&] { return !finished.isEmpty(); }));
}

TEST_F(AutomationServiceTest, RefusesMoreCallsAtOnceThanItCanKeep) {
    start({});
    QList<QDBusPendingCall> calls;
    for (int count = 0; count < 1100; ++count)
        calls.append(checkPort());
    const auto finished = [&] {
        return std::ranges::count_if(calls, &QDBusPendingCall::isFinished);
    };
    ASSERT_TRUE(wait([&] { return finished() == 1100 - 1024; }));
    tables.mayAnswer.release(kMany);
    ASSERT_TRUE(wait([&] { return finished() == 1100; }));
    EXPECT_EQ(std::ranges::count_if(calls, &QDBusPendingCall::isError), 1100 - 1024);
}

} // namespace
} // namespace zenlot
