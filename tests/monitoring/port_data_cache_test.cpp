#include "inventory/occupied_ports_json.h"
#include "monitoring/broadcast_names.h"
#include "monitoring/port_data_cache.h"
#include "platform/fake_broadcast_center.h"

#include <QTemporaryDir>
#include <QTest>
#include <gmock/gmock.h>

#include <fstream>
#include <memory>

namespace zenlot {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class PortDataCacheTest : public testing::Test {
  protected:
    PortDataCacheTest() {
        std::filesystem::create_directory(file.parent_path());
        QObject::connect(&notifications, &NotificationCenter::portsUpdated,
                         [this] { announced.push_back(shared.copy().size()); });
        restart();
    }
    void restart(std::chrono::milliseconds pause = 0ms) {
        cache = std::make_unique<PortDataCache>(SharedContainer(folder.path()), shared, broadcasts,
                                                notifications, reader, pause);
    }
    void write(const std::string& text) const { std::ofstream(file) << text; }
    void publish(std::size_t ports) const {
        write(encodeOccupiedPorts(std::vector<OccupiedPort>(ports)));
    }
    bool waitFor(std::size_t size) {
        return QTest::qWaitFor([&] { return !announced.empty() && announced.back() == size; });
    }
    // Time for whatever is under way, and for what it may begin.
    void settle() {
        for (int round = 0; round < 10; ++round) {
            reader.wait();
            QCoreApplication::processEvents();
        }
    }

    QTemporaryDir folder;
    const std::filesystem::path file =
        std::filesystem::path(folder.path().toStdString()) / kContainerFolder / kPortsFile;
    SharedPortCache shared;
    FakeBroadcastCenter broadcasts;
    NotificationCenter notifications;
    std::vector<std::size_t> announced; // the size of the list at each announcement
    WorkerThreads reader{1};
    std::unique_ptr<PortDataCache> cache;
};

TEST_F(PortDataCacheTest, FollowsTheBroadcastsButIgnoresWhatItCannotRead) {
    publish(3);
    cache->start();
    cache->start();
    ASSERT_TRUE(waitFor(3));
    for (const char* const wrong : {R"([{"port":1}])", "["}) {
        write(wrong);
        broadcasts.post(kPortsUpdatedBroadcast);
        settle();
    }
    EXPECT_EQ(shared.copy().size(), 3U);
    publish(0);
    broadcasts.post(kPortsUpdatedBroadcast);
    ASSERT_TRUE(waitFor(0));
    EXPECT_THAT(announced, ElementsAre(3, 0));
}

TEST_F(PortDataCacheTest, CallsDuringALoadOrThePauseCostOneMoreWhichSeesTheNewestList) {
    cache->loadPorts(); // there is no file yet
    settle();
    publish(1);
    cache->loadPorts();
    reader.wait(); // read, but not delivered yet
    publish(2);
    for (int call = 0; call < 100; ++call)
        cache->loadPorts();
    ASSERT_TRUE(waitFor(2));
    settle();
    restart(1h);
    for (int call = 0; call < 3; ++call) {
        cache->loadPorts();
        settle();
    }
    EXPECT_THAT(announced, ElementsAre(1, 2, 2));
}

TEST_F(PortDataCacheTest, MayBeDestroyedDuringALoadAndWhileItAnnounces) {
    publish(1);
    cache->loadPorts();
    cache.reset();
    settle();
    EXPECT_THAT(announced, ElementsAre());
    restart();
    QObject::connect(&notifications, &NotificationCenter::portsUpdated, [this] { cache.reset(); });
    cache->start();
    ASSERT_TRUE(waitFor(1));
    EXPECT_EQ(broadcasts.observerCount(kPortsUpdatedBroadcast), 0U);
}

} // namespace
} // namespace zenlot
