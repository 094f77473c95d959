#include "background_monitor/container_keeper.h"
#include "monitoring/published_ports.h"
#include "support/temporary_folder.h"

#include <QTest>
#include <gmock/gmock.h>

#include <filesystem>
#include <optional>

namespace zenlot {
namespace {

namespace fs = std::filesystem;
using testing::UnorderedElementsAre;

class ContainerKeeperTest : public testing::Test {
  protected:
    ContainerKeeperTest() { keeper.emplace(stateHome()); }

    QString stateHome() const { return QString::fromStdString(folder.path().string()); }
    void start() {
        keeper->writer().replace("ports.json", "[]");
        keeper->start({.remade =
                           [this] {
                               ++remade;
                               keeper->writer().replace("ports.json", "[]");
                           },
                       .lost = [this] { ++lost; }});
    }
    bool isMinded() const { return isPortListMinded(SharedContainer(stateHome())); }

    const std::string kContainer{kContainerFolder};
    TemporaryFolder folder;
    fs::path container = folder.path() / kContainer;
    std::optional<ContainerKeeper> keeper;
    int remade = 0;
    int lost = 0;
};

TEST_F(ContainerKeeperTest, ClearsAwayWhatAKilledOneLeftAndNothingElse) {
    keeper.reset();
    for (const char* name : {"ports.json", ".ports.json.a1B2c3", ".conflict-80.json.zzzzzz",
                             "conflicts.json", ".somebody's"})
        folder.write(kContainer + "/" + name, "[1]");
    keeper.emplace(stateHome());
    EXPECT_THAT(folder.names(kContainer), UnorderedElementsAre(".monitor.lock", ".somebody's",
                                                               "conflicts.json", "ports.json"));
    EXPECT_EQ(folder.read(kContainer + "/ports.json"), "[]");
}

TEST_F(ContainerKeeperTest, IsMadeAnewWhenItIsRemovedMovedOrReplaced) {
    start();
    const auto expectRestored = [this](int times) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return remade == times; }, 20'000));
        EXPECT_TRUE(isMinded());
        EXPECT_FALSE(ContainerKeeper(stateHome()).isOurs());
    };
    fs::rename(container, folder.path() / "removed");
    expectRestored(1);
    fs::rename(container, folder.path() / "elsewhere");
    expectRestored(2);
    fs::rename(container, folder.path() / "aside");
    fs::create_directory(container);
    expectRestored(3);
    fs::remove(container / "ports.json");
    expectRestored(4);
    EXPECT_EQ(lost, 0);
}

TEST_F(ContainerKeeperTest, IsLeftToAnotherMonitorThatWasQuicker) {
    start();
    fs::rename(container, folder.path() / "aside");
    const ContainerKeeper other(stateHome());
    ASSERT_TRUE(other.isOurs());
    keeper->check();
    EXPECT_EQ(lost, 1);
    EXPECT_FALSE(keeper->isOurs());
    EXPECT_EQ(remade, 0);
}

// Lists of other writers have no lock, and are believed unless they are older than the machine
// runs.
TEST_F(ContainerKeeperTest, TheListIsMindedByWhoHoldsTheLock) {
    keeper.reset();
    EXPECT_FALSE(isMinded()) << "a lock that nobody holds";
    fs::remove(container / ".monitor.lock");
    EXPECT_TRUE(isMinded()) << "no lock";
    fs::last_write_time(container / "ports.json",
                        fs::file_time_type::clock::now() - std::chrono::years(30));
    EXPECT_FALSE(isMinded()) << "no lock, and a list of long ago";
}

} // namespace
} // namespace zenlot
