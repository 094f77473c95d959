#include "monitoring/conflict_record.h"

#include <gtest/gtest.h>

#include <array>
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
    EXPECT_EQ(encodeConflictRecord(records.back()), cases[2].json);
    EXPECT_EQ(decodeConflictRecords("[]"), std::vector<ConflictRecord>{});
}

TEST(ConflictRecordJson, ReadsTheTimeInEveryFormOfANumber) {
    const std::pair<const char*, std::optional<double>> cases[] = {
        {"null", std::nullopt}, {"0", 0.0},     {"-1", -1.0},
        {"7911e5", 791100000},  {"0.25", 0.25}, {"1e300", 1e300},
    };
    for (const auto& [text, seconds] : cases) {
        SCOPED_TRACE(text);
        const auto record = decodeConflictRecord(
            R"({"port":1,"pid":2,"processName":"a","displayName":"b","detectedAt":)" +
            std::string(text) + "}");
        ASSERT_TRUE(record);
        EXPECT_EQ(record->detectedAt,
                  seconds ? std::optional(fromReferenceSeconds(*seconds)) : std::nullopt);
    }
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

TEST(ReferenceTime, CountsFrom2001AndConvertsBothWays) {
    const auto unixTime = std::chrono::system_clock::time_point(978307200s);
    EXPECT_EQ(toSystemTime(fromReferenceSeconds(0)), unixTime);
    for (const auto offset : {-978307200s, -1s, 0s, 791120000s}) {
        EXPECT_EQ(toReferenceTime(unixTime + offset).time_since_epoch(), offset);
        EXPECT_EQ(toSystemTime(toReferenceTime(unixTime + offset + 250ms)),
                  unixTime + offset + 250ms);
    }
}

TEST(ReferenceTime, InstantsBeyondSystemTimeGiveTheNearest) {
    using Limits = std::numeric_limits<double>;
    const auto latest = toSystemTime(fromReferenceSeconds(Limits::infinity()));
    const auto earliest = toSystemTime(fromReferenceSeconds(-Limits::infinity()));
    EXPECT_LT(std::chrono::system_clock::time_point::max() - latest, 1s);
    EXPECT_LT(earliest - std::chrono::system_clock::time_point::min(), 1s);
    EXPECT_EQ(toSystemTime(fromReferenceSeconds(1e300)), latest);
    EXPECT_EQ(toSystemTime(fromReferenceSeconds(9e9)), latest);
    EXPECT_EQ(toSystemTime(fromReferenceSeconds(-1.1e10)), earliest);
}

} // namespace
} // namespace zenlot
