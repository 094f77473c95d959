#include "platform/linux/exit_deadline.h"
#include "platform/linux/termination_signals.h"

#include <QTest>
#include <gtest/gtest.h>

#include <unistd.h>

namespace zenlot {
namespace {

TEST(TerminationSignalsTest, EachIsReportedOnceFromTheEventLoop) {
    const auto handlingOf = [](int signal) {
        struct sigaction action {};
        ::sigaction(signal, nullptr, &action);
        return action.sa_handler;
    };
    ::signal(SIGHUP, SIG_IGN);
    {
        int wishes = 0;
        TerminationSignals termination;
        EXPECT_EQ(handlingOf(SIGHUP), SIG_IGN);
        ::raise(SIGTERM);
        termination.follow([&] { ++wishes; });
        EXPECT_TRUE(QTest::qWaitFor([&] { return wishes == 1; })) << "it came before the loop";
        ::raise(SIGINT);
        EXPECT_EQ(handlingOf(SIGINT), SIG_DFL) << "a second one would end the program";
        EXPECT_TRUE(QTest::qWaitFor([&] { return wishes == 2; }));
    }
    ::signal(SIGHUP, SIG_DFL);
    EXPECT_EQ(handlingOf(SIGTERM), SIG_DFL);
    ::alarm(0); // which replaces the end that the signals have set
}

TEST(ExitDeadlineTest, EndsAProgramWhoseThreadsHang) {
    EXPECT_EXIT(
        {
            exitWithin(std::chrono::milliseconds(1), 3);
            for (;;)
                ::pause();
        },
        testing::ExitedWithCode(3), "");
}

} // namespace
} // namespace zenlot
