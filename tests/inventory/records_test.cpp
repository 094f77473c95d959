#include "inventory/app_port_group.h"
#include "inventory/port_process.h"
#include "inventory/shared_port_cache.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <thread>

namespace zenlot {
namespace {

using testing::MatchesRegex;

OccupiedPort recordOf(std::int64_t pid, std::int64_t port, std::string user = {}) {
    return {port, "TCP4", "", "", pid, std::move(user), ""};
}

TEST(OccupiedPortTest, IdIsPidAndPort) {
    EXPECT_EQ(recordOf(4312, 3000).id(), "4312:3000");
    EXPECT_EQ(recordOf(0, 22).id(), "0:22");
}

TEST(OccupiedPortTest, OwnerIsCurrentUserOnlyByAnExactNumber) {
    for (const char* user : {"501", "+501", "000501"}) {
        EXPECT_TRUE(recordOf(1, 1, user).isCurrentUser(501)) << user;
        EXPECT_FALSE(recordOf(1, 1, user).isCurrentUser(502)) << user;
    }
    for (const char* user : {"0", "+0", "-0", "-000"})
        EXPECT_TRUE(recordOf(1, 1, user).isCurrentUser(0)) << user;
    EXPECT_TRUE(recordOf(1, 1, "4294967295").isCurrentUser(4294967295U));
    // Also not the users that sloppy parsing would take these for.
    for (const char* user : {"", "+", "-", "+-0", "--0", "abc", " 0", "0 ", "0x1", "1e0", "5 01",
                             "-5", "-501", "4294967296", "4294967797", "18446744073709552117"}) {
        for (const UserId currentUser : {0U, 1U, 5U, 501U, 4294967291U, 4294967295U})
            EXPECT_FALSE(recordOf(1, 1, user).isCurrentUser(currentUser)) << user;
    }
}

TEST(AppPortGroupTest, IdIsThePathElseTheFirstPortElseNew) {
    EXPECT_EQ((AppPortGroup{"/A/Foo.app", {recordOf(77, 631)}}).id(), "/A/Foo.app");
    EXPECT_EQ((AppPortGroup{std::nullopt, {recordOf(77, 631), recordOf(78, 80)}}).id(), "77:631");
    const std::string id = AppPortGroup().id();
    EXPECT_THAT(id, MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB].{3}-[0-9A-F]{12}"));
    EXPECT_NE(id, AppPortGroup().id());
}

TEST(PortProcessTest, RowRepeatsTheRecordUnderANewIdAndName) {
    const char* const path = "/Applications/NoteTaker.app/Contents/MacOS/tool";
    const OccupiedPort record{5, "TCP6", "tool", "Stale Name", 512, "501", path};
    const PortProcess row = PortProcess::fromOccupiedPort(record);
    const PortProcess expected{row.id, 512,    "tool",   "Note Taker", "501",
                               path,   "TCP6", "LISTEN", "*:5",        5};
    EXPECT_EQ(row, expected);
    EXPECT_NE(row, PortProcess::fromOccupiedPort(record));
}

TEST(SharedPortCacheTest, ReadersSeeWholeListsOnly) {
    SharedPortCache cache;
    EXPECT_TRUE(cache.copy().empty());
    std::thread writer([&cache] {
        for (std::int64_t pid = 1; pid <= 500; ++pid)
            cache.replace(std::vector(8, recordOf(pid, 80)));
    });
    std::vector<OccupiedPort> seen;
    while (seen.empty() || seen.front().pid < 500) {
        seen = cache.copy();
        EXPECT_TRUE(seen.empty() || seen == std::vector(8, seen.front()));
    }
    writer.join();
}

} // namespace
} // namespace zenlot
