#include "inventory/occupied_ports_json.h"
#include "inventory/record_json.h"
#include "inventory/shared_port_cache.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <thread>

namespace zenlot {
namespace {

using namespace std::string_literals;

TEST(OccupiedPortTest, OwnerIsCurrentUserOnlyByAnExactNumber) {
    OccupiedPort record;
    for (const char* user : {"501", "+501", "000501"}) {
        record.user = user;
        EXPECT_TRUE(record.isCurrentUser(501) && !record.isCurrentUser(502)) << user;
    }
    // Also not the users that sloppy parsing would take these for.
    for (const char* user : {"", "-", "+-0", "abc", " 0", "0 ", "0x1", "-5", "4294967296"}) {
        record.user = user;
        for (const UserId currentUser : {0U, 1U, 5U, 4294967291U, 4294967295U})
            EXPECT_FALSE(record.isCurrentUser(currentUser)) << user;
    }
}

TEST(SharedPortCacheTest, ReadersSeeWholeListsOnly) {
    SharedPortCache cache;
    std::thread writer([&cache] {
        OccupiedPort record;
        while (++record.port <= 500)
            cache.replace(std::vector(8, record));
    });
    std::vector<OccupiedPort> seen;
    while (seen.empty() || seen.front().port < 500) {
        seen = cache.copy();
        EXPECT_TRUE(seen.empty() || seen == std::vector(8, seen.front()));
    }
    writer.join();
}

TEST(SharedPortCacheTest, AListThatNobodyMindsIsEmpty) {
    bool isMinded = true;
    SharedPortCache cache([&isMinded] { return isMinded; });
    cache.replace({OccupiedPort()});
    EXPECT_EQ(cache.copy().size(), 1U);
    isMinded = false;
    EXPECT_TRUE(cache.copy().empty());
}

const std::vector<OccupiedPort> kPorts{{3000, "TCP4", "node", "Node", 4312, "501", "/usr/bin/node"},
                                       {std::numeric_limits<std::int64_t>::max(), "",
                                        R"(a"  b \ /)", "\n\t\x01\x7F\u0080\u009F\u00A0\u00C2",
                                        std::numeric_limits<std::int64_t>::min(), "\0"s,
                                        "/\u00E9\U0001F680\uFFFE"}};

// The text of the first port with one part replaced.
std::string changed(const std::string& from, const std::string& to) {
    std::string json = encodeOccupiedPorts(std::span(kPorts).first(1));
    return json.replace(json.find(from), from.size(), to);
}

std::string nested(std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
}

TEST(RecordsJsonTest, WritesEveryKeyInOrderAndReadsThemBack) {
    const OccupiedPort illFormed{0, "", "a\xFFz", "", 0, "", ""};
    EXPECT_EQ(encodeOccupiedPorts(std::array{kPorts[0], illFormed}),
              R"([{"port":3000,"proto":"TCP4","processName":"node","displayName":"Node",)"
              R"("pid":4312,"user":"501","executablePath":"/usr/bin/node"},{"port":0,"proto":"",)"
              R"("processName":"a�z","displayName":"","pid":0,"user":"","executablePath":""}])");
    EXPECT_EQ(decodeOccupiedPorts(encodeOccupiedPorts(kPorts)), kPorts);
}

TEST(RecordsJsonTest, HoldsNothingThatATerminalWouldObey) {
    const std::string json = encodeOccupiedPorts(kPorts);
    EXPECT_NE(json.find(R"("\n\t\u0001\u007f\u0080\u009f)"
                        "\u00A0\u00C2\""),
              std::string::npos)
        << json;
}

TEST(RecordsJsonTest, AcceptsWhateverIsNotItsBusiness) {
    for (const std::string& value :
         {"\t1e300 \r\n"s, R"([{"port":"y","pid":[{}]},null])"s, R"(true,"Port":" \" \\")"s,
          "99999999999999999999"s, nested(kMaxJsonDepth - 2)})
        EXPECT_TRUE(decodeOccupiedPorts(changed("3000", R"(3000,"other":)" + value))) << value;
}

TEST(RecordsJsonTest, RefusesDocumentsWhole) {
    const std::string good = changed("", "");
    const std::string blanks(kMaxJsonBytes - good.size(), ' ');
    EXPECT_TRUE(decodeOccupiedPorts(good + blanks));
    std::vector<std::string> texts{"[", std::string(kMaxJsonBytes, '['), good + blanks + ' '};
    for (const auto& document : {""s, "{}"s, "[{}]"s, "[[]]"s, "[1]"s, good + 'x', good + '\0',
                                 changed("\"node\"", "1"), changed(R"("port":3000,)", "")})
        texts.push_back(document);
    for (const auto& number : {"null", "\"1\"", "[]", "true", "1.0", "1e0", "01", "1,\"port\":1",
                               "9223372036854775808", "-9223372036854775809"})
        texts.push_back(changed("3000", number));
    for (const auto& value :
         {"tru"s, "1e999"s, std::string(100000, '9'), "\"\\ud800\""s, "\"\\x\""s, "\"\n\""s,
          "\"\xC3\""s, "\"\xED\xA0\x80\""s, nested(kMaxJsonDepth - 1), nested(1000000)})
        texts.push_back(changed("3000", R"(3000,"other":)" + value));
    for (const std::string& text : texts)
        EXPECT_EQ(decodeOccupiedPorts(text), std::nullopt) << text.substr(0, 200);
}

} // namespace
} // namespace zenlot
