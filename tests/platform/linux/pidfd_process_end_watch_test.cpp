#include "platform/linux/pidfd_process_end_watch.h"
#include "support/child_process.h"

#include <QStringList>
#include <QTest>
#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

TEST(PidfdProcessEndWatchTest, TellsOnceOfThoseThatAreStillWatched) {
    PidfdProcessEndWatch ends;
    QStringList told;
    const auto tell = [&told](const char* name) {
        return [&told, name] { told.append(QLatin1String(name)); };
    };
    const ChildProcess living;
    const ChildProcess dying;
    const auto ofLiving = ends.watch(living.pid(), tell("living"));
    const auto ofDying = ends.watch(dying.pid(), tell("dying"));
    auto ended = ends.watch(dying.pid(), tell("no longer watched"));
    std::unique_ptr<ProcessEndWatch::Watch> endsItself =
        ends.watch(dying.pid(), [&told, &endsItself] {
            endsItself.reset();
            told.append(u"itself"_s);
        });
    ended.reset();
    // No process has such a number; the last is no number of a process.
    const auto ofNobody = ends.watch(1 << 30, tell("nobody"));
    const auto ofNothing = ends.watch((1LL << 32) + living.pid(), tell("nothing"));
    EXPECT_TRUE(told.isEmpty());
    ASSERT_TRUE(QTest::qWaitFor([&] { return told.contains(QLatin1String("nobody")); }));

    ::kill(dying.pid(), SIGKILL); // and nobody asks how it ended
    ASSERT_TRUE(QTest::qWaitFor([&] { return told.size() >= 3; }));
    for (int turn = 0; turn < 10; ++turn)
        QCoreApplication::processEvents();
    told.sort();
    EXPECT_EQ(told, (QStringList{u"dying"_s, u"itself"_s, u"nobody"_s}));
}

} // namespace
} // namespace zenlot
