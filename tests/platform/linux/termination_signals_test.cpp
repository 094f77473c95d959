#include "platform/linux/termination_signals.h"

#include <QTest>
#include <gtest/gtest.h>

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
        const TerminationSignals termination([&] { ++wishes; });
        EXPECT_EQ(handlingOf(SIGHUP), SIG_IGN);
        for (const int signal : {SIGTERM, SIGINT}) {
            wishes = 0;
            ::raise(signal);
            EXPECT_EQ(handlingOf(signal), SIG_DFL) << "a second one would end the program";
            EXPECT_TRUE(QTest::qWaitFor([&] { return wishes == 1; }));
        }
    }
    ::signal(SIGHUP, SIG_DFL);
    EXPECT_EQ(handlingOf(SIGTERM), SIG_DFL);
}

} // namespace
} // namespace zenlot
