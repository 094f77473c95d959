#include "workers/worker_threads.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFutureWatcher>
#include <gmock/gmock.h>

#include <atomic>
#include <latch>
#include <numeric>
#include <stdexcept>
#include <string>
#include <vector>

namespace zenlot {
namespace {

using testing::ElementsAre;

// So many that the first are done while the last still come.
TEST(WorkerThreadsTest, OneThreadKeepsTheOrderAndTheEndWaitsForAll) {
    std::vector<int> done;
    std::vector<int> posted(1000);
    std::iota(posted.begin(), posted.end(), 0);
    {
        WorkerThreads worker(1);
        for (const int number : posted)
            worker.post([&done, number] { done.push_back(number); });
    }
    EXPECT_EQ(done, posted);
}

TEST(WorkerThreadsTest, WhatWasNotBegunCanBeCancelledOrDropped) {
    for (const bool isDropped : {false, true}) {
        std::latch begun(1);
        std::latch goOn(1);
        std::atomic<bool> isDone = false;
        WorkerThreads worker(1);
        worker.post([&] {
            begun.count_down();
            goOn.wait();
        });
        begun.wait();
        QFuture<void> future = worker.run([&isDone] { isDone = true; });
        if (isDropped)
            worker.clear();
        else
            future.cancel();
        goOn.count_down();
        worker.wait();
        EXPECT_FALSE(isDone);
        EXPECT_EQ(future.isFinished(), !isDropped);
    }
}

// The result may be taken while the work's own thread has not yet let go of it.
TEST(WorkerThreadsTest, AResultThatIsTakenAtOnceIsToldOnce) {
    constexpr int kRounds = 2000;
    WorkerThreads workers(2);
    QFutureWatcher<std::string> watcher;
    QEventLoop loop;
    int told = 0;
    QObject::connect(&watcher, &QFutureWatcherBase::finished, &watcher, [&] {
        EXPECT_EQ(watcher.future().takeResult(), "result");
        if (++told == kRounds)
            loop.quit();
        else
            watcher.setFuture(workers.run([] { return std::string("result"); }));
    });
    watcher.setFuture(workers.run([] { return std::string("result"); }));
    loop.exec();
    workers.wait();
    QCoreApplication::processEvents();
    EXPECT_EQ(told, kRounds);
}

TEST(WorkerThreadsTest, WithoutAThreadWorkWaitsForOneAndIsDroppedAtTheEnd) {
    int left = 0; // threads
    const auto start = [&left](QThread& thread) {
        if (left == 0)
            return false;
        --left;
        thread.start();
        return true;
    };
    QFuture<int> never;
    std::vector<int> done;
    {
        WorkerThreads workers(2, start);
        workers.post([&done] { done.push_back(1); });
        EXPECT_THAT(done, ElementsAre());
        left = 1;
        workers.post([&done] { done.push_back(2); });
        workers.wait();
        EXPECT_THAT(done, ElementsAre(1, 2));
    }
    {
        WorkerThreads workers(2, start);
        never = workers.run([] { return 1; });
    }
    EXPECT_FALSE(never.isFinished());
}

} // namespace
} // namespace zenlot
