#include "settings/app_log.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

#include <barrier>
#include <thread>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

const std::string kStart = "2026-11-16T20:25:47Z [zenlot-app] ";
const std::string kName = "monitor.log";

class AppLogTest : public testing::Test {
  protected:
    TemporaryFolder folder_;
    std::filesystem::path path_ = folder_.path() / kName;
    AppLog log_{QString::fromStdString(path_),
                [] { return std::chrono::system_clock::time_point(1794860747999ms); }};
};

TEST_F(AppLogTest, AppendsOneLineForEachEvent) {
    const std::pair<QString, std::string> cases[] = {
        {u"a\nb\r\tc\u001b[31m\u0085"_s, "a\\nb\\r\\tc\\u001b[31m\\u0085"},
        {u"\\ü\u2028\u202egol.exe\u2069"_s, "\\ü\\u2028\\u202egol.exe\\u2069"},
        {QString(4095, u'x') + u"👩👩"_s, std::string(4095, 'x') + "…"},
    };
    folder_.link(kName, "target");
    std::string expected;
    for (const auto& [message, written] : cases) {
        log_.writeAppLog(message);
        expected += kStart + written + "\n";
    }
    log_.settle();
    EXPECT_EQ(folder_.read("target"), expected);
}

// Two threads of the program, and another program that makes the file and appends to it.
TEST_F(AppLogTest, ConcurrentLinesStayWholeAndNoneIsLost) {
    const std::string a = kStart + "a\n";
    const auto expected = testing::AnyOf(a + a + "other\n", a + "other\n" + a, "other\n" + a + a);
    for (int round = 0; round < 100; ++round) {
        std::barrier start(3);
        const auto application = [&] {
            start.arrive_and_wait();
            log_.writeAppLog(u"a"_s);
        };
        std::thread first(application);
        std::thread second(application);
        start.arrive_and_wait();
        std::ofstream(path_, std::ios::app) << "other\n";
        first.join();
        second.join();
        log_.settle();
        ASSERT_THAT(folder_.read(kName), expected);
        std::filesystem::remove(path_);
    }
}

TEST_F(AppLogTest, TheMonitorKeepsOneOldLog) {
    AppLog monitor(QString::fromStdString(path_), std::chrono::system_clock::now,
                   AppLog::Author::backgroundMonitor);
    for (const char* first : {"a", "b"}) {
        folder_.write(kName, first);
        monitor.writeAppLog(u"short"_s);
        monitor.settle();
        std::filesystem::resize_file(path_, AppLog::kLongestLog + 1);
        log_.writeAppLog(u"the application's"_s);
        log_.settle();
        monitor.writeAppLog(u"new"_s);
        monitor.settle();
        EXPECT_THAT(folder_.read(kName), testing::EndsWith("[zenlot-daemon] new\n"));
        EXPECT_LT(std::filesystem::file_size(path_), 100U);
        EXPECT_THAT(folder_.read(kName + ".1"), testing::StartsWith(first));
    }
    EXPECT_EQ(folder_.names(), (std::set<std::string>{kName, kName + ".1"}));
}

TEST_F(AppLogTest, DropsLinesWhereNoFileCanBeWritten) {
    ASSERT_EQ(::mkfifo(path_.c_str(), 0600), 0);
    log_.writeAppLog(u"nobody reads"_s);
    log_.settle();
    AppLog log(monitorLogPath(QString::fromStdString(folder_.path())));
    log.writeAppLog(u"no folder"_s);
    log.settle();
    EXPECT_EQ(folder_.names(), std::set<std::string>{kName});
    const mode_t before = ::umask(0);
    log.makeFolder();
    log.makeFolder();
    log.settle();
    ::umask(before);
    for (const char* folder : {"Library", "Library/Logs"})
        EXPECT_EQ(std::filesystem::status(folder_.path() / folder).permissions(),
                  std::filesystem::perms::owner_all)
            << "private, whatever other files are";
    EXPECT_TRUE(folder_.names("Library/Logs").empty());
}

} // namespace
} // namespace zenlot
