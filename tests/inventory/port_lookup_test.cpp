#include "inventory/fake_process_tables.h"
#include "inventory/port_lookup.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

OccupiedPort cached(std::int64_t port, std::int64_t pid, const std::string& path) {
    return {port, "TCP4", "cached", "Stored Name", pid, "501", path};
}

class PortLookupTest : public testing::Test {
  protected:
    FakeProcessTables tables;
    SharedPortCache cache;
    PortScanner scanner{tables, [](std::uint16_t, AddressFamily) { return false; }};
    PortLookup lookup{scanner, cache};
};

TEST_F(PortLookupTest, FindsInTheCacheWhatTheScanDoesNotSee) {
    cache.replace({cached(8080, 512, "/Applications/Sample.app/Contents/MacOS/server"),
                   cached(8081, 513, "/bin/other"), cached(8080, 514, "/bin/twin")});
    const auto rows = lookup.processesOnPort(8080);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].pid, 512);
    EXPECT_EQ(rows[0].name, "cached");
    EXPECT_EQ(rows[0].displayName, "Sample"); // worked out afresh, not the stored one
    EXPECT_EQ(rows[0].fullCommand, "/Applications/Sample.app/Contents/MacOS/server");
    EXPECT_EQ(rows[0].user, "501");
    EXPECT_EQ(rows[0].state, "LISTEN");
    EXPECT_EQ(rows[0].localAddress, "*:8080");
    EXPECT_EQ(rows[1].pid, 514);
    EXPECT_FALSE(rows[0].id == rows[1].id);
}

TEST_F(PortLookupTest, RicherCachedRecordReplacesAnOwnerlessOne) {
    tables.table = {{22, 0, AddressFamily::ipv4, 0}};
    EXPECT_EQ(lookup.processesOnPort(22).at(0).pid, 0);
    cache.replace({cached(22, 99, "/usr/sbin/sshd")});
    ASSERT_EQ(lookup.processesOnPort(22).size(), 1U);
    EXPECT_EQ(lookup.processesOnPort(22).at(0).pid, 99);
    EXPECT_TRUE(lookup.processesOnPort(23).empty());
}

TEST(CheckPortAnswerTest, Sentences) {
    const auto row = [](const std::string& displayName, std::int64_t pid) {
        PortProcess process;
        process.displayName = displayName;
        process.pid = pid;
        return process;
    };
    EXPECT_EQ(checkPortAnswer(0, {}), "Please enter a valid port number between 1 and 65535.");
    EXPECT_EQ(checkPortAnswer(70000, {}), "Please enter a valid port number between 1 and 65535.");
    EXPECT_EQ(checkPortAnswer(8080, {}), "Port 8080 is free — nothing is using it.");
    EXPECT_EQ(checkPortAnswer(5000, {row("Sample", 812), row("", 930)}),
              "Port 5000 is used by: Sample (PID 812),  (PID 930)");
}

} // namespace
} // namespace zenlot
