// With shells as children, in which a test can see what became of them.
#include "platform/fake_app_service.h"
#include "platform/fallback_app_service.h"
#include "platform/linux/child_app_service.h"
#include "support/temporary_folder.h"

#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using enum AppServiceStatus;

class ChildAppServiceTest : public testing::Test {
  protected:
    // Each start adds a line with the process.
    std::unique_ptr<ChildAppService> childThat(const QString& does) const {
        const QString script = u"echo $$ >> '%1'; "_s.arg(starts_) + does;
        return std::make_unique<ChildAppService>(u"/bin/sh"_s, QStringList{u"-c"_s, script},
                                                 ChildPatience{.beforeRestart = 1ms});
    }
    std::string starts() const { return folder_.read("starts"); }
    bool comesTo(int count) const {
        return QTest::qWaitFor([&] { return std::ranges::count(starts(), '\n') == count; }, 20'000);
    }
    // The one that was started last.
    pid_t child() const {
        const std::string lines = starts();
        const std::size_t before = lines.rfind('\n', lines.size() - 2);
        return std::stoi(before == std::string::npos ? lines : lines.substr(before + 1));
    }
    static bool hasEnded(pid_t process) {
        return QTest::qWaitFor([=] { return ::kill(process, 0) != 0; }, 20'000);
    }

    TemporaryFolder folder_;
    const QString starts_ = QString::fromStdString(folder_.path() / "starts");
};

TEST_F(ChildAppServiceTest, RunsAsLongAsItIsRegisteredAndNoLongerThanItsParent) {
    std::unique_ptr<ChildAppService> service = childThat(u"exec sleep 1000"_s);
    EXPECT_EQ(service->status(), notRegistered);
    EXPECT_EQ(service->registerService(), std::nullopt);
    EXPECT_EQ(service->registerService(), std::nullopt);
    EXPECT_EQ(service->status(), enabled);
    ASSERT_TRUE(comesTo(1));

    // A crash is made good, and so is being wanted again before the end.
    ::kill(child(), SIGKILL);
    ASSERT_TRUE(comesTo(2));
    EXPECT_EQ(service->unregisterService(), std::nullopt);
    EXPECT_EQ(service->status(), notRegistered);
    QCoreApplication::processEvents();
    EXPECT_EQ(service->registerService(), std::nullopt);
    ASSERT_TRUE(comesTo(3));

    const pid_t last = child();
    service.reset();
    EXPECT_TRUE(hasEnded(last));
}

TEST_F(ChildAppServiceTest, GivesUpWhatCrashesTooOften) {
    const std::unique_ptr<ChildAppService> service = childThat(u"exit 3"_s);
    for (const int starts : {5, 10}) {
        EXPECT_EQ(service->registerService(), std::nullopt);
        EXPECT_EQ(service->failure(), std::nullopt);
        EXPECT_TRUE(QTest::qWaitFor([&] { return service->failure().has_value(); }, 20'000));
        EXPECT_TRUE(comesTo(starts));
    }
    ChildAppService absent(u"/nonexistent"_s, {});
    EXPECT_EQ(absent.registerService()->code, static_cast<int>(ChildError::cannotRun));
    EXPECT_EQ(absent.status(), notRegistered);
}

TEST(FallbackAppServiceTest, TheDesktopsServiceCountsWhereThereIsOne) {
    FakeAppService desktops;
    FakeAppService own;
    bool hasDesktops = false;
    FallbackAppService service(desktops, own, [&] { return hasDesktops; });
    EXPECT_EQ(service.registerService(), std::nullopt);
    EXPECT_EQ(service.status(), enabled);
    EXPECT_EQ(desktops.registerCalls, 0);
    hasDesktops = true; // as when a session gets its manager late
    EXPECT_EQ(service.status(), notRegistered);
    EXPECT_EQ(service.registerService(), std::nullopt);
    EXPECT_EQ(own.currentStatus, notRegistered);
    EXPECT_EQ(desktops.currentStatus, enabled);
    EXPECT_EQ(service.unregisterService(), std::nullopt);
    EXPECT_EQ(desktops.currentStatus, notRegistered);
}

} // namespace
} // namespace zenlot
