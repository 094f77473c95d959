#include "inventory/fake_process_tables.h"
#include "inventory/port_lookup.h"
#include "inventory/port_merge.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

TEST(PortMergeTest, TheFirstRicherCachedRecordReplacesAFreshOne) {
    const std::vector<OccupiedPort> fresh{{80, "", "", "", 7, "fresh", ""},
                                          {22, "", "", "", 0, "fresh", ""},
                                          {81, "", "", "", 7, "fresh", ""},
                                          {22, "", "n", "N", 7, "fresh", "/n"}};
    const std::vector<OccupiedPort> cached{
        {90, "", "", "", 7, "first", ""},   {80, "", "n", "", 0, "poorer", ""},
        {80, "", "n", "", 7, "richer", ""}, {22, "", "n", "", 0, "richer", ""},
        {22, "", "n", "", 7, "later", ""},  {81, "", "n", "N", 0, "equal", ""},
        {90, "", "n", "", 7, "next", ""},   {21, "", "", "", 0, "other", ""}};
    const std::vector expected{cached[7], cached[3], fresh[3], cached[2],
                               fresh[2],  cached[0], cached[6]};
    EXPECT_EQ(mergeWithCache(fresh, cached), expected);
    EXPECT_EQ(mergeWithCache({}, cached), cached);
    EXPECT_EQ(mergeWithCache(fresh, {}), fresh);
}

TEST(PortLookupTest, MergesTheScanWithTheCache) {
    FakeProcessTables tables;
    tables.table = {{22, 0, AddressFamily::ipv4, 0}};
    const PortScanner scanner(tables, [](std::uint16_t, AddressFamily) { return false; });
    EXPECT_EQ(processesOnPort(scanner, 22).at(0).pid, 0);
    const char* const path = "/Applications/NoteTaker.app/Contents/MacOS/tool";
    const std::vector<OccupiedPort> published{{22, "TCP6", "tool", "Stale Name", 512, "501", path},
                                              {80, "TCP4", "web", "", 7, "0", "/bin/web"}};
    const auto rows = processesOnPort(scanner, 22, published);
    ASSERT_EQ(rows.size(), 1U);
    const PortProcess expected{rows[0].id, 512,    "tool",   "Note Taker", "501",
                               path,       "TCP6", "LISTEN", "*:22",       22};
    EXPECT_EQ(rows[0], expected);
    EXPECT_NE(rows[0].id, processesOnPort(scanner, 22, published).at(0).id);
    EXPECT_EQ(processesOnPort(scanner, 80, published).at(0).pid, 7);
    EXPECT_TRUE(processesOnPort(scanner, 23, published).empty());
}

} // namespace
} // namespace zenlot
