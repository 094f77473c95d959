#include "settings/app_log.h"
#include "support/temporary_files.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <barrier>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace zenlot {
namespace {

const std::string kStart = "2026-11-16T20:25:47Z [zenlot-app] ";
const QString kName = QStringLiteral("monitor.log");

std::chrono::system_clock::time_point fixedTime() {
    return std::chrono::system_clock::time_point(std::chrono::milliseconds(1794860747999));
}

class AppLogTest : public testing::Test {
  protected:
    void log(const QString& message) { log_.writeAppLog(message); }

    std::string content(const QString& name = kName) const {
        return folder_.read(name).toStdString();
    }

    TemporaryFiles folder_;
    AppLog log_{folder_.path(kName), fixedTime};
};

TEST_F(AppLogTest, MakesTheFileThenAppends) {
    log(QStringLiteral("first — 1"));
    EXPECT_EQ(content(), kStart + "first — 1\n");
    folder_.write(kName, "of the monitor\n");
    log(QString());
    EXPECT_EQ(content(), "of the monitor\n" + kStart + "\n");
    EXPECT_EQ(folder_.names(), QStringList(kName));
}

TEST_F(AppLogTest, OneEventStaysOneLine) {
    const std::vector<std::pair<QString, std::string>> cases{
        {QStringLiteral("a\nb\r\tc"), "a\\nb\\r\\tc"},
        {QStringLiteral("\u001b[31m\u007f\u0085") + QChar(u'\0'),
         "\\u001b[31m\\u007f\\u0085\\u0000"},
        {QStringLiteral("\u2028\u202egol.exe\u2069"), "\\u2028\\u202egol.exe\\u2069"},
        {QStringLiteral("C:\\n \"Grüße\" 👩‍💻"), "C:\\n \"Grüße\" 👩‍💻"},
        {QString(5000, u'x'), std::string(4096, 'x') + "…"},
        {QString(4095, u'x') + QStringLiteral("👩👩"), std::string(4095, 'x') + "…"},
    };
    std::string expected;
    for (const auto& [message, written] : cases) {
        log(message);
        expected += kStart + written + "\n";
    }
    EXPECT_EQ(content(), expected);
}

TEST_F(AppLogTest, DropsLinesWhereNoFileCanBeWritten) {
    const QByteArray name = folder_.encoded(kName);
    AppLog(folder_.path(QStringLiteral("Logs/") + kName)).writeAppLog(QStringLiteral("no folder"));
    EXPECT_TRUE(folder_.names().isEmpty());

    ASSERT_EQ(::mkdir(name.constData(), 0700), 0);
    log(QStringLiteral("onto a folder"));
    ASSERT_EQ(::rmdir(name.constData()), 0);

    ASSERT_EQ(::symlink(name.constData(), name.constData()), 0);
    log(QStringLiteral("round and round"));
    ASSERT_EQ(::unlink(name.constData()), 0);

    ASSERT_EQ(::mkfifo(name.constData(), 0600), 0);
    log(QStringLiteral("nobody reads"));
    const int reader = ::open(name.constData(), O_RDONLY | O_NONBLOCK);
    log(QStringLiteral("somebody reads"));
    char byte = 0;
    EXPECT_EQ(::read(reader, &byte, 1), 0);
    ::close(reader);
    EXPECT_EQ(folder_.names(), QStringList(kName));
}

TEST_F(AppLogTest, FollowsASymbolicLinkWhoseFileIsMissing) {
    ASSERT_EQ(::symlink("elsewhere", folder_.encoded(kName).constData()), 0);
    log(QStringLiteral("a"));
    log(QStringLiteral("b"));
    EXPECT_EQ(content(QStringLiteral("elsewhere")), kStart + "a\n" + kStart + "b\n");
    EXPECT_TRUE(QFileInfo(folder_.path(kName)).isSymLink());
}

// Two threads of the program, and another program that makes the file and appends to it at the
// same time. Each round starts without a file.
TEST_F(AppLogTest, ConcurrentLinesStayWholeAndNoneIsLost) {
    const QByteArray name = folder_.encoded(kName);
    const auto application = [this](const std::string& line) { log(QString::fromStdString(line)); };
    const auto monitor = [&name](const std::string& line) {
        const int file = ::open(name.constData(), O_WRONLY | O_APPEND | O_CREAT, 0600);
        EXPECT_GT(::write(file, (line + '\n').data(), line.size() + 1), 0);
        ::close(file);
    };
    for (int round = 0; round < 100; ++round) {
        std::barrier start(3);
        std::vector<std::thread> threads;
        std::multiset<std::string> expected;
        const auto run = [&](const std::string& tag, const std::string& writer, const auto& write) {
            for (const char* number : {"1", "2", "3"})
                expected.insert(tag + writer + number);
            threads.emplace_back([&start, writer, &write] {
                start.arrive_and_wait();
                for (const char* number : {"1", "2", "3"})
                    write(writer + number);
            });
        };
        run(kStart, "first", application);
        run(kStart, "second", application);
        run("", "monitor", monitor);
        for (std::thread& thread : threads)
            thread.join();
        std::multiset<std::string> lines;
        std::istringstream written(content());
        for (std::string line; std::getline(written, line);)
            lines.insert(line);
        ASSERT_EQ(lines, expected);
        ASSERT_EQ(::unlink(name.constData()), 0);
    }
}

TEST_F(AppLogTest, StandsInAFolderThatIsMadeOnItsOwn) {
    const QString home = folder_.path(QStringLiteral("home"));
    EXPECT_TRUE(makeMonitorLogDirectory(home));
    EXPECT_TRUE(makeMonitorLogDirectory(home));
    AppLog(monitorLogPath(home), fixedTime).writeAppLog(QStringLiteral("here"));
    EXPECT_EQ(content(QStringLiteral("home/Library/Logs/zenlot-monitor.log")), kStart + "here\n");
    EXPECT_FALSE(makeMonitorLogDirectory(monitorLogPath(home)));
}

} // namespace
} // namespace zenlot
