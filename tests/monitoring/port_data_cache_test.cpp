#include "inventory/records_json.h"
#include "monitoring/broadcast_names.h"
#include "monitoring/port_data_cache.h"
#include "platform/fake_broadcast_center.h"

#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>

namespace zenlot {
namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;

OccupiedPort portNumbered(std::int64_t port) {
    return {port, "TCP4", "node", "Node", 4242, "501", "/usr/bin/node"};
}

class PortDataCacheTest : public testing::Test {
  protected:
    PortDataCacheTest() {
        std::filesystem::create_directory(container);
        notifications.observe(kPortsUpdated, &observer, [this](const UserInfo&) {
            const std::vector<OccupiedPort> ports = shared.copy();
            announced.push_back(ports.empty() ? 0 : ports.front().port);
        });
        notifications.observe(kConflictsUpdated, &observer,
                              [this](const UserInfo&) { ++conflictUpdates; });
    }

    void writeText(const std::string& text) const {
        std::ofstream(container / kPortsFile, std::ios::binary) << text;
    }
    // Replaces the list as the monitor does: at once.
    void publish(const std::vector<OccupiedPort>& ports) const {
        std::ofstream(container / "new", std::ios::binary) << encodeOccupiedPorts(ports);
        std::filesystem::rename(container / "new", container / kPortsFile);
    }
    bool waitForPort(std::int64_t port) {
        return QTest::qWaitFor([&] { return !announced.empty() && announced.back() == port; });
    }
    std::unique_ptr<PortDataCache> makeCache(std::chrono::milliseconds pause = 1ms) {
        return std::make_unique<PortDataCache>(SharedContainer(folder.path()), shared, broadcasts,
                                               notifications, pause);
    }
    // A load runs ahead of its result, which the event loop has not delivered yet.
    static void finishReading() { QThreadPool::globalInstance()->waitForDone(); }

    QTemporaryDir folder;
    const std::filesystem::path container =
        std::filesystem::path(folder.path().toStdString()) / kContainerFolder;
    SharedPortCache shared;
    FakeBroadcastCenter broadcasts;
    NotificationCenter notifications;
    QObject observer;
    std::vector<std::int64_t> announced; // the first port of the cache at each announcement
    int conflictUpdates{0};
    std::unique_ptr<PortDataCache> cache = makeCache();
};

TEST_F(PortDataCacheTest, StartsOnce) {
    EXPECT_FALSE(cache->isStarted());
    publish({portNumbered(3000)});
    cache->start();
    cache->start();
    EXPECT_TRUE(cache->isStarted());
    EXPECT_EQ(broadcasts.observerCount(kPortsUpdatedBroadcast), 1U);
    EXPECT_EQ(broadcasts.observerCount(kConflictsUpdatedBroadcast), 1U);
    ASSERT_TRUE(waitForPort(3000));
    EXPECT_THAT(shared.copy(), ElementsAre(portNumbered(3000)));
}

TEST_F(PortDataCacheTest, FollowsTheBroadcasts) {
    cache->start();
    broadcasts.post(kConflictsUpdatedBroadcast);
    ASSERT_TRUE(QTest::qWaitFor([this] { return conflictUpdates > 0; }));
    EXPECT_EQ(conflictUpdates, 1);

    publish({portNumbered(3000), portNumbered(3001)});
    broadcasts.post(kPortsUpdatedBroadcast);
    ASSERT_TRUE(waitForPort(3000));
    EXPECT_THAT(shared.copy(), ElementsAre(portNumbered(3000), portNumbered(3001)));

    publish({}); // an empty list is a list
    broadcasts.post(kPortsUpdatedBroadcast);
    ASSERT_TRUE(waitForPort(0));
    EXPECT_THAT(shared.copy(), IsEmpty());
}

TEST_F(PortDataCacheTest, WhatCannotBeReadChangesNothingAndSaysNothing) {
    publish({portNumbered(3000)});
    cache->loadPorts();
    ASSERT_TRUE(waitForPort(3000));

    const std::function<void()> faults[] = {
        [this] { writeText(R"([{"port":1}])"); },
        [this] { writeText(encodeOccupiedPorts({{portNumbered(1)}}).substr(0, 40)); },
        [this] { writeText(""); },
        [this] { std::filesystem::remove(container / kPortsFile); },
        [this] { std::filesystem::create_directory(container / kPortsFile); },
        [this] { std::filesystem::remove_all(container); },
    };
    for (const auto& fault : faults) {
        fault();
        cache = makeCache();
        cache->loadPorts();
        finishReading();
        QCoreApplication::processEvents();
    }
    EXPECT_THAT(announced, ElementsAre(3000));
    EXPECT_THAT(shared.copy(), ElementsAre(portNumbered(3000)));

    std::filesystem::create_directory(container);
    publish({portNumbered(3001)});
    cache->loadPorts();
    EXPECT_TRUE(waitForPort(3001));
}

TEST_F(PortDataCacheTest, CallsDuringALoadCostExactlyOneMoreWhichSeesTheNewestList) {
    publish({portNumbered(3000)});
    cache->loadPorts();
    finishReading();
    publish({portNumbered(3001)});
    for (int call = 0; call < 100; ++call)
        cache->loadPorts();
    ASSERT_TRUE(waitForPort(3001));
    publish({portNumbered(3002)});
    cache->loadPorts();
    ASSERT_TRUE(waitForPort(3002));
    EXPECT_THAT(announced, ElementsAre(3000, 3001, 3002));
}

TEST_F(PortDataCacheTest, AFailedLoadDoesNotSwallowTheOneBeforeIt) {
    publish({portNumbered(3000)});
    cache->loadPorts();
    finishReading();
    writeText("[");
    cache->loadPorts();
    EXPECT_TRUE(waitForPort(3000));
}

TEST_F(PortDataCacheTest, ABurstOfBroadcastsCostsFewLoads) {
    publish({portNumbered(3000)});
    cache->start();
    for (int signal = 0; signal < 10'000; ++signal)
        broadcasts.post(kPortsUpdatedBroadcast);
    ASSERT_TRUE(waitForPort(3000));
    publish({portNumbered(3001)});
    broadcasts.post(kPortsUpdatedBroadcast);
    ASSERT_TRUE(waitForPort(3001));
    EXPECT_THAT(announced.size(), AllOf(Ge(2U), Le(4U)));
}

TEST_F(PortDataCacheTest, BroadcastsThatKeepComingWaitForThePause) {
    publish({portNumbered(3000)});
    cache = makeCache(1h);
    cache->start();
    ASSERT_TRUE(waitForPort(3000));
    for (int turn = 0; turn < 100; ++turn) {
        broadcasts.post(kPortsUpdatedBroadcast);
        QCoreApplication::processEvents();
        finishReading();
    }
    QCoreApplication::processEvents();
    EXPECT_THAT(announced, ElementsAre(3000));
}

TEST_F(PortDataCacheTest, MayBeDestroyedWhileALoadWaitsOrRunsOrAnnounces) {
    publish({portNumbered(3000)});

    QThreadPool& pool = *QThreadPool::globalInstance();
    const int threads = pool.maxThreadCount();
    QSemaphore gate;
    pool.setMaxThreadCount(1);
    pool.start([&gate] { gate.acquire(); });
    cache->loadPorts();
    cache.reset();
    gate.release();
    pool.setMaxThreadCount(threads);
    finishReading();
    QCoreApplication::processEvents();
    EXPECT_THAT(announced, IsEmpty());
    EXPECT_THAT(shared.copy(), IsEmpty());

    cache = makeCache();
    notifications.observe(kPortsUpdated, &observer, [this](const UserInfo&) { cache.reset(); });
    cache->start();
    ASSERT_TRUE(waitForPort(3000));
    EXPECT_EQ(cache, nullptr);
    EXPECT_EQ(broadcasts.observerCount(kPortsUpdatedBroadcast), 0U);
}

} // namespace
} // namespace zenlot
