#include "inventory/linux/linux_process_pinner.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <csignal>

namespace zenlot {
namespace {

// A child that waits until it is ended.
class Child {
  public:
    Child() : pid_(::fork()) {
        if (pid_ == 0) {
            for (;;)
                ::pause();
        }
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }

    pid_t pid() const { return pid_; }

    // Waits for the end, but leaves the process a zombie.
    int endedBy() const {
        siginfo_t info{};
        ::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT);
        return info.si_status;
    }

  private:
    pid_t pid_;
};

TEST(LinuxProcessPinnerTest, EndsAProcessOfThisUser) {
    const LinuxProcessPinner pinner;
    const Child child;
    EXPECT_TRUE(forceQuitProcess(pinner, child.pid()));
    EXPECT_EQ(child.endedBy(), SIGKILL);
    // What has ended is not signalled again, though its parent has not collected it yet.
    EXPECT_FALSE(forceQuitProcess(pinner, child.pid()));
}

TEST(LinuxProcessPinnerTest, LeavesOtherUsersAlone) {
    const LinuxProcessPinner pinner;
    const Child child;
    EXPECT_FALSE(forceQuitProcess(pinner, child.pid(), currentUserId() + 1));
    EXPECT_EQ(::kill(child.pid(), 0), 0);
    EXPECT_EQ(pinner.pin(child.pid())->effectiveUid(), ::geteuid());
}

TEST(LinuxProcessPinnerTest, ProcessThatIsGoneCantBePinned) {
    pid_t pid = 0;
    {
        const Child child;
        pid = child.pid();
    }
    EXPECT_EQ(LinuxProcessPinner().pin(pid), nullptr);
    EXPECT_FALSE(forceQuitProcess(LinuxProcessPinner(), pid));
}

} // namespace
} // namespace zenlot
