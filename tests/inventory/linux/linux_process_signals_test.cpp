#include "inventory/linux/linux_process_pinner.h"
#include "inventory/linux/linux_process_signals.h"
#include "support/child_process.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

TEST(LinuxProcessSignalsTest, ReachTheProcessThatIsMeantAndNoOther) {
    const LinuxProcessSignals signals;
    const ChildProcess child;
    const auto start = LinuxProcessPinner().pin(child.pid())->startTime();
    ASSERT_TRUE(start);
    for (const ProcessIdentity& other :
         {ProcessIdentity{child.pid(), *start + 1}, ProcessIdentity{child.pid(), {}},
          ProcessIdentity{0, *start}, ProcessIdentity{::getpid(), {}}})
        EXPECT_FALSE(signals.send(other, ProcessSignals::Signal::kill));
    EXPECT_TRUE(child.isRunning());
    EXPECT_TRUE(signals.send({child.pid(), start}, ProcessSignals::Signal::terminate));
    EXPECT_EQ(child.waitForSignal(), SIGTERM);
    EXPECT_FALSE(signals.send({child.pid(), start}, ProcessSignals::Signal::kill));
}

} // namespace
} // namespace zenlot
