#include "monitoring/conflict_record.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>

namespace zenlot {
namespace {

using namespace std::chrono_literals;

TEST(ConflictRecordJson, IsOneObjectWithTheKeysInOrder) {
    struct Case {
        const char* json;
        ConflictRecord record;
    };
    const Case cases[] = {
        {R"({"port":3000,"pid":4242,"processName":"node","displayName":"Node","detectedAt":0.0})",
         {3000, 4242, "node", "Node", fromReferenceSeconds(0)}},
        {R"({"port":8080,"pid":0,"processName":"","displayName":"Caf\u00e9",)"
         R"("detectedAt":791120000.123456})",
         {8080, 0, "", "Café", fromReferenceSeconds(791120000.123456)}},
        {R"({"port":-1,"pid":1,"processName":"","displayName":"","detectedAt":1e+300})",
         {-1, 1, "", "", fromReferenceSeconds(1e300)}},
        {R"({"port":1,"pid":9223372036854775807,"processName":"a","displayName":"b"})",
         {1, std::numeric_limits<std::int64_t>::max(), "a", "b", std::nullopt}},
    };
    std::string array = "[";
    std::vector<ConflictRecord> records;
    for (const auto& [json, record] : cases) {
        SCOPED_TRACE(json);
        EXPECT_EQ(decodeConflictRecord(json), record);
        EXPECT_EQ(decodeConflictRecord(encodeConflictRecord(record)), record);
        EXPECT_EQ(decodeConflictRecords(json), std::nullopt);
        array += (records.empty() ? "" : ",") + std::string(json);
        records.push_back(record);
    }
    array += "]";
    EXPECT_EQ(decodeConflictRecords(array), records);
    EXPECT_EQ(decodeConflictRecords(encodeConflictRecords(records)), records);
    EXPECT_EQ(decodeConflictRecord(array), std::nullopt);
    EXPECT_EQ(encodeConflictRecord(records.front()), cases[0].json);
    EXPECT_EQ(encodeConflictRecord(records.back()), cases[3].json);
    EXPECT_EQ(decodeConflictRecords("[]"), std::vector<ConflictRecord>{});
}

TEST(ConflictRecordJson, OneWrongElementSpoilsTheWholeArray) {
    const std::string good = R"({"port":1,"pid":2,"processName":"a","displayName":"b"})";
    const char* const wrong[] = {
        R"({"port":1,"pid":2,"processName":"a"})",
        R"({"port":"1","pid":2,"processName":"a","displayName":"b"})",
        R"({"port":1,"pid":null,"processName":"a","displayName":"b"})",
        R"({"port":1,"pid":2,"processName":"a","DisplayName":"b"})",
        R"({"port":1,"pid":2,"processName":"a","displayName":"b","detectedAt":"0"})",
        "null",
    };
    EXPECT_TRUE(decodeConflictRecords("[" + good + "," + good + "]"));
    for (const char* const json : wrong) {
        EXPECT_FALSE(decodeConflictRecords("[" + good + "," + json + "]")) << json;
        EXPECT_FALSE(decodeConflictRecord(json)) << json;
    }
}

TEST(ReferenceTime, CountsFrom2001AndConvertsBothWaysWithinReach) {
    using std::chrono::system_clock;
    const auto start = system_clock::time_point(978307200s);
    EXPECT_EQ(toSystemTime(fromReferenceSeconds(0)), start);
    for (const auto offset : {-978307200s, -1s, 0s, 791120000s}) {
        const ReferenceTime time = toReferenceTime(start + offset + 250ms);
        EXPECT_EQ(time.time_since_epoch(), offset + 250ms);
        EXPECT_EQ(toSystemTime(time), start + offset + 250ms);
    }
    for (const double beyond : {9e9, 1e300, std::numeric_limits<double>::infinity()}) {
        const auto latest = toSystemTime(fromReferenceSeconds(beyond));
        const auto earliest = toSystemTime(fromReferenceSeconds(-2 * beyond));
        EXPECT_LT(system_clock::time_point::max() - latest, 1s);
        EXPECT_LT(earliest - system_clock::time_point::min(), 1s);
    }
}

} // namespace
} // namespace zenlot
