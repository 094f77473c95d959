#include "inventory/linux/linux_process_pinner.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <csignal>

namespace zenlot {
namespace {

TEST(LinuxProcessPinnerTest, EndsAProcessOfThisUser) {
    const LinuxProcessPinner pinner;
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(::pause());
    EXPECT_EQ(pinner.pin(child)->effectiveUid(), ::geteuid());
    EXPECT_FALSE(forceQuitProcess(pinner, child, ::geteuid() + 1));
    siginfo_t info{};
    EXPECT_EQ(::waitid(P_ALL, 0, &info, WEXITED | WNOWAIT | WNOHANG), 0);
    EXPECT_EQ(info.si_pid, 0); // it still runs

    EXPECT_TRUE(forceQuitProcess(pinner, child));
    ::waitid(P_ALL, 0, &info, WEXITED | WNOWAIT);
    EXPECT_EQ(info.si_status, SIGKILL);
    // What has ended is not signalled again, though its parent has not collected it yet.
    EXPECT_FALSE(forceQuitProcess(pinner, child));
    ::waitpid(child, nullptr, 0);
    EXPECT_EQ(pinner.pin(child), nullptr);
}

} // namespace
} // namespace zenlot
