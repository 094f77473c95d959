// The service without a kernel: who is told what.
#include "bindwatch/bind_events.h"
#include "bindwatch/bind_server.h"
#include "bindwatch/fake_bind_source.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace zenlot {
namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t kAnother = 4711;

class BindServerTest : public testing::Test {
  protected:
    FileDescriptor connect() const { return connectReader(path, SOCK_NONBLOCK); }

    // A turn for each thing that may follow from another.
    void serve() {
        for (int turns = 0; turns < 4; ++turns)
            server.serve(0ms);
    }

    static bool isHungUp(const FileDescriptor& reader) {
        char byte = 0;
        const ssize_t length = ::recv(reader.get(), &byte, 1, MSG_PEEK);
        return length == 0 || (length < 0 && errno == ECONNRESET);
    }

    static BindEvent event(std::uint32_t user, std::uint16_t port) {
        BindEvent happened = bindEvent(ZENLOT_BIND_REFUSED, 10, port);
        happened.user = user;
        return happened;
    }

    TemporaryFolder folder;
    std::string path = (folder.path() / "binds").string();
    FakeBindSource source;
    BindServer server{source, listenForReaders(path)};
};

TEST_F(BindServerTest, TakesNoteOnlyWhileSomebodyReads) {
    EXPECT_FALSE(source.isStarted);
    FileDescriptor reader = connect();
    serve();
    EXPECT_TRUE(source.isStarted);
    EXPECT_THAT(source.followed, testing::ElementsAre(::getuid()));
    ASSERT_TRUE(readPacket(reader)) << "is greeted";
    FileDescriptor second = connect();
    serve();
    reader = FileDescriptor();
    serve();
    EXPECT_THAT(source.followed, testing::ElementsAre(::getuid()));
    second = FileDescriptor();
    serve();
    EXPECT_THAT(source.followed, testing::IsEmpty());
    EXPECT_FALSE(source.isStarted);
}

TEST_F(BindServerTest, TellsOnlyWhatIsTheReadersOwn) {
    const FileDescriptor reader = connect();
    serve();
    ASSERT_TRUE(readPacket(reader));
    source.happen(event(kAnother, 80));
    source.happen(event(::getuid(), 81));
    source.lost[kAnother] = 9;
    serve();
    const auto packet = readPacket(reader);
    ASSERT_TRUE(packet);
    ASSERT_EQ(packet->events.size(), 1U);
    EXPECT_EQ(packet->events.front().port, 81);
    EXPECT_EQ(packet->lost, 0U);
    EXPECT_FALSE(readPacket(reader));
}

TEST_F(BindServerTest, CountsWhatWasLostSinceTheReaderCame) {
    source.lost[::getuid()] = 5;
    const FileDescriptor reader = connect();
    serve();
    EXPECT_EQ(readPacket(reader)->lost, 0U);
    source.lost[::getuid()] = 7;
    source.happen(event(::getuid(), 81));
    serve();
    EXPECT_EQ(readPacket(reader)->lost, 2U);
}

TEST_F(BindServerTest, AReaderThatTakesNothingCostsOnlyItself) {
    const FileDescriptor idle = connect();
    const FileDescriptor reader = connect();
    serve();
    ASSERT_TRUE(readPacket(reader));
    std::size_t taken = 0;
    constexpr std::size_t kEvents = 20'000;
    for (std::size_t count = 0; count < kEvents; count += 100) {
        for (int each = 0; each < 100; ++each)
            source.happen(event(::getuid(), 81));
        server.serve(0ms);
        while (const auto packet = readPacket(reader))
            taken += packet->events.size();
    }
    EXPECT_EQ(taken, kEvents);
    EXPECT_EQ(server.readers(), 2U);
}

TEST_F(BindServerTest, BoundsTheReadersOfAUser) {
    std::vector<FileDescriptor> readers;
    for (std::size_t count = 0; count < BindServer::kMostReadersOfUser + 3; ++count) {
        readers.push_back(connect());
        serve();
    }
    EXPECT_EQ(server.readers(), BindServer::kMostReadersOfUser);
    EXPECT_TRUE(isHungUp(readers.back()));
}

TEST_F(BindServerTest, HangsUpOnWhoSpeaksAndWhenTheKernelRefuses) {
    const FileDescriptor speaker = connect();
    serve();
    ASSERT_TRUE(readPacket(speaker));
    ASSERT_EQ(::send(speaker.get(), "hello", 5, 0), 5);
    serve();
    EXPECT_TRUE(isHungUp(speaker));
    source.canStart = false;
    const FileDescriptor late = connect();
    serve();
    EXPECT_TRUE(isHungUp(late));
    EXPECT_EQ(server.readers(), 0U);
}

TEST_F(BindServerTest, ASignalEndsNothing) {
    struct sigaction ignore {};
    ignore.sa_handler = [](int) {};
    ::sigaction(SIGALRM, &ignore, nullptr);
    const itimerval often{{0, 1000}, {0, 1000}};
    ::setitimer(ITIMER_REAL, &often, nullptr);
    EXPECT_TRUE(server.serve(20s));
    const itimerval never{};
    ::setitimer(ITIMER_REAL, &never, nullptr);
}

TEST_F(BindServerTest, ASocketThatIsServedOrNoneOfOursIsLeftAlone) {
    EXPECT_FALSE(listenForReaders(path));
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0666U);
    const std::string file = (folder.path() / "file").string();
    ::close(::creat(file.c_str(), 0600));
    EXPECT_FALSE(listenForReaders(file));
    EXPECT_EQ(::access(file.c_str(), F_OK), 0);
    const std::string left = (folder.path() / "left").string();
    listenForReaders(left);
    EXPECT_TRUE(listenForReaders(left)) << "of a program that was killed";
}

} // namespace
} // namespace zenlot
