#include "platform/linux/journal_system_log.h"
#include "support/qt_temporary_folder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

#include <csignal>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

struct JournalSystemLogTest : testing::Test {
    JournalSystemLogTest() {
        sockaddr_un address{AF_UNIX, {}};
        std::copy(path.begin(), path.end(), address.sun_path);
        EXPECT_EQ(::bind(service, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        EXPECT_EQ(::pipe(pipe), 0);
    }
    ~JournalSystemLogTest() override {
        for (const int descriptor : {pipe[0], pipe[1], service})
            ::close(descriptor);
    }

    static std::string read(int descriptor) {
        std::string bytes(8192, '\0');
        const ssize_t size = ::read(descriptor, bytes.data(), bytes.size());
        return size < 0 ? "(nothing)" : bytes.substr(0, static_cast<std::size_t>(size));
    }

    QtTemporaryFolder folder;
    QByteArray path = folder.encoded(u"socket"_s);
    int pipe[2]{};
    int service = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0);
};

TEST_F(JournalSystemLogTest, WritesOneLineToWhoeverIsThere) {
    JournalSystemLog("zenlot", {pipe[1], "/nowhere", path, {}}).write(u"a\nb\u202E—"_s);
    EXPECT_EQ(read(pipe[0]), "a\\nb\\u202e—\n");
    EXPECT_EQ(read(service), "<13>zenlot[" + std::to_string(::getpid()) + "]: a\\nb\\u202e—");
    JournalSystemLog("zenlot", {pipe[1], path, "/nowhere", {}}).write(u"a\nPRIORITY=0"_s);
    EXPECT_EQ(read(service), "MESSAGE=a\\nPRIORITY=0\nPRIORITY=5\nSYSLOG_IDENTIFIER=zenlot\n");
    struct stat status {};
    ::fstat(pipe[1], &status);
    const std::string stream = std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino);
    JournalSystemLog("zenlot", {pipe[1], path, "/nowhere", stream.c_str()}).write(u"once"_s);
    EXPECT_EQ(read(service), "(nothing)");
}

TEST_F(JournalSystemLogTest, NeverWaitsForAReaderAndNeedsNone) {
    JournalSystemLog log("zenlot", {pipe[1], path, "/nowhere", {}});
    for (int line = 0; line < 200; ++line)
        log.write(QString(10'000, u'\u0001'));
    EXPECT_LE(read(service).size(), 4200U);
    read(pipe[0]);                 // makes room again
    std::signal(SIGPIPE, SIG_DFL); // ends the program
    ::close(std::exchange(pipe[0], -1));
    log.write(u"nobody"_s);
}

} // namespace
} // namespace zenlot
