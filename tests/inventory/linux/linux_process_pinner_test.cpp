#include "inventory/linux/linux_process_pinner.h"
#include "support/child_process.h"
#include "support/listener.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/syscall.h>

#include <cstddef>

namespace zenlot {
namespace {

using namespace std::chrono_literals;
using Obstacle = ForceQuitObstacle;

TEST(LinuxProcessPinnerTest, EndsTheProcessOfThisUserThatIsMeant) {
    const LinuxProcessPinner pinner;
    ChildProcess child;
    const auto pinned = pinner.pin(child.pid());
    EXPECT_EQ(pinned->effectiveUid(), ::geteuid());
    EXPECT_FALSE(pinned->hasEnded());
    const std::int64_t start = pinned->startTime().value();
    const ForceQuitTarget target{{child.pid(), start}};
    EXPECT_FALSE(forceQuitProcess(pinner, target, ::geteuid() + 1));
    EXPECT_FALSE(forceQuitProcess(pinner, {{child.pid(), start - 1}}));
    EXPECT_FALSE(forceQuitProcess(pinner, {{child.pid()}, 1}));
    EXPECT_TRUE(child.isRunning());

    EXPECT_TRUE(forceQuitProcess(pinner, target));
    EXPECT_EQ(child.waitForSignal(), SIGKILL);
    // What has ended is not signalled again, though its parent has not collected it yet.
    EXPECT_TRUE(pinned->hasEnded());
    EXPECT_EQ(lookAtProcess(pinner, target).obstacle, Obstacle::gone);
    EXPECT_FALSE(forceQuitProcess(pinner, target));
    const pid_t pid = child.pid();
    child.end();
    EXPECT_EQ(pinner.pin(pid), nullptr);
}

TEST(LinuxProcessPinnerTest, KnowsPortsAndStarts) {
    const LinuxProcessPinner pinner;
    const Listener before;
    const auto earliest = std::chrono::system_clock::now();
    ChildProcess child; // has the socket, too
    const Listener after;
    const auto pinned = pinner.pin(child.pid());
    EXPECT_TRUE(pinned->listensOn(before.port()));
    EXPECT_FALSE(pinned->listensOn(after.port()));
    EXPECT_TRUE(pinner.pin(::getpid())->listensOn(after.port()));
    // A tick of the user's clock is 10 ms; the two clocks are read one after the other.
    EXPECT_GT(pinned->startedAt().value(), earliest - 1ms);
    EXPECT_LT(pinned->startedAt().value(), std::chrono::system_clock::now() + 11ms);

    const LinuxProcessTables tables;
    EXPECT_EQ(tables.beginSnapshot(std::nullopt)->startTime(child.pid()), pinned->startTime());
    EXPECT_EQ(tables.beginSnapshot(std::nullopt)->startTime(1 << 30), std::nullopt);
}

TEST(LinuxProcessPinnerTest, LeavesServiceManagersAlone) {
    const TemporaryFolder folder;
    const std::string program = (folder.path() / "systemd").string();
    std::filesystem::copy("/bin/sleep", program);
    const ChildProcess child(
        [&program] { return ::execl(program.c_str(), program.c_str(), "1000", nullptr) == 0; });
    const LinuxProcessPinner pinner;
    // Between fork and exec it is still this program.
    while (child.isRunning() && !pinner.pin(child.pid())->isServiceManager())
        ::usleep(1000);
    const ProcessSighting seen = lookAtProcess(pinner, {{child.pid()}});
    EXPECT_EQ(seen.obstacle, Obstacle::serviceManager);
    EXPECT_FALSE(forceQuitProcess(pinner, {seen.process}));
    EXPECT_TRUE(child.wasLeftAlone());
    EXPECT_EQ(lookAtProcess(pinner, {{1}}).obstacle, Obstacle::initProcess);
    EXPECT_EQ(lookAtProcess(pinner, {{::getpid()}}).obstacle, Obstacle::ownProcess);
}

// As sandboxes do that are older than pidfds.
bool forbidPidfds() {
    sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_pidfd_open, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter{static_cast<unsigned short>(std::size(program)), program};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

TEST(LinuxProcessPinnerTest, DoesWithoutPidfdsWhereTheyAreForbidden) {
    ChildProcess meant;
    ChildProcess other;
    ChildProcess ended;
    ::kill(ended.pid(), SIGKILL);
    EXPECT_EQ(ended.waitForSignal(), SIGKILL);
    const LinuxProcessPinner pinner;
    const std::int64_t start = pinner.pin(meant.pid())->startTime().value();
    const ChildProcess sandboxed([&] {
        if (!forbidPidfds() || ::syscall(SYS_pidfd_open, meant.pid(), 0) >= 0)
            return false;
        const bool isRight = !forceQuitProcess(pinner, {{other.pid(), start - 1}}) &&
                             lookAtProcess(pinner, {{ended.pid()}}).obstacle == Obstacle::gone &&
                             lookAtProcess(pinner, {{1 << 30}}).obstacle == Obstacle::gone &&
                             forceQuitProcess(pinner, {{meant.pid(), start}});
        ::kill(::getpid(), isRight ? SIGUSR1 : SIGABRT);
        return false;
    });
    EXPECT_EQ(sandboxed.waitForSignal(), SIGUSR1);
    EXPECT_EQ(meant.waitForSignal(), SIGKILL);
    EXPECT_TRUE(other.wasLeftAlone());
}

} // namespace
} // namespace zenlot
