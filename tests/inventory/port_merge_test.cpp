#include "inventory/port_merge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace zenlot {
namespace {

enum Known : unsigned { nothing = 0, name = 1, pid = 2, displayName = 4, path = 8, all = 15 };

// `user` tells the records of a test apart; it says nothing about the process.
OccupiedPort recordOf(std::int64_t port, std::string user, unsigned known) {
    return {port,
            "TCP4",
            (known & name) != 0 ? "n" : "",
            (known & displayName) != 0 ? "N" : "",
            (known & pid) != 0 ? 7 : 0,
            std::move(user),
            (known & path) != 0 ? "/n" : ""};
}

// The rule, one step after the other, with no thought for its cost.
std::vector<OccupiedPort> mergedByTheBook(const std::vector<OccupiedPort>& fresh,
                                          const std::vector<OccupiedPort>& cached) {
    if (fresh.empty() || cached.empty())
        return fresh.empty() ? cached : fresh;
    std::vector<OccupiedPort> merged;
    for (const OccupiedPort& record : fresh) {
        const auto richer = std::find_if(cached.begin(), cached.end(), [&](const auto& other) {
            return other.port == record.port && recordRichness(other) > recordRichness(record);
        });
        merged.push_back(richer == cached.end() ? record : *richer);
    }
    for (const OccupiedPort& record : cached) {
        if (std::none_of(fresh.begin(), fresh.end(),
                         [&](const auto& other) { return other.port == record.port; }))
            merged.push_back(record);
    }
    std::stable_sort(merged.begin(), merged.end(),
                     [](const auto& left, const auto& right) { return left.port < right.port; });
    return merged;
}

TEST(PortMergeTest, RichnessAddsUpWhatIsKnown) {
    const std::pair<unsigned, int> cases[] = {{nothing, 0},     {name, 2}, {pid, 4},
                                              {displayName, 2}, {path, 3}, {all, 11}};
    for (const auto& [known, expected] : cases)
        EXPECT_EQ(recordRichness(recordOf(1, "501", known)), expected) << known;
    OccupiedPort negative;
    negative.pid = -1;
    EXPECT_EQ(recordRichness(negative), 0);
}

TEST(PortMergeTest, AnEmptyListLeavesTheOtherAsItIs) {
    const std::vector unsorted{recordOf(80, "a", all), recordOf(22, "b", nothing)};
    EXPECT_EQ(mergeWithCache({}, unsorted), unsorted);
    EXPECT_EQ(mergeWithCache(unsorted, {}), unsorted);
}

TEST(PortMergeTest, OnlyARicherCachedRecordReplacesAFreshOne) {
    const std::vector fresh{recordOf(22, "0", nothing), recordOf(80, "fresh", pid)};
    const std::vector cached{recordOf(8080, "a", all), recordOf(22, "b", name),
                             recordOf(22, "c", all),   recordOf(80, "d", pid),
                             recordOf(8080, "e", all), recordOf(21, "f", nothing)};
    const std::vector expected{recordOf(21, "f", nothing), recordOf(22, "b", name), fresh[1],
                               cached[0], cached[4]};
    EXPECT_EQ(mergeWithCache(fresh, cached), expected);
    EXPECT_EQ(mergeWithCache({fresh[1]}, {cached[3], recordOf(80, "g", all)}),
              std::vector{recordOf(80, "g", all)});
}

TEST(PortMergeTest, AgreesWithTheRuleOnRandomLists) {
    std::mt19937 random(7); // NOLINT: the same lists in every run
    const auto randomList = [&random] {
        std::vector<OccupiedPort> records(random() % 12);
        for (OccupiedPort& record : records)
            record = recordOf(static_cast<std::int64_t>(random() % 6) - 1, std::to_string(random()),
                              static_cast<unsigned>(random() % 16));
        return records;
    };
    for (int round = 0; round < 3000; ++round) {
        const std::vector<OccupiedPort> fresh = randomList();
        const std::vector<OccupiedPort> cached = randomList();
        ASSERT_EQ(mergeWithCache(fresh, cached), mergedByTheBook(fresh, cached)) << round;
    }
}

} // namespace
} // namespace zenlot
