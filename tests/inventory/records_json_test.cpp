#include "inventory/record_json.h"
#include "inventory/records_json.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

namespace zenlot {
namespace {

using namespace std::string_literals;

struct Sample {
    std::int64_t count{0};
    std::string name;
    std::optional<double> ratio;

    friend bool operator==(const Sample&, const Sample&) = default;
};

constexpr std::array<JsonField<Sample>, 3> kSampleFields{
    {{"count", &Sample::count}, {"name", &Sample::name}, {"ratio", &Sample::ratio}}};

std::optional<std::vector<Sample>> samplesIn(std::string_view text) {
    return decodeRecords<Sample>(text, kSampleFields);
}

std::string repeated(std::size_t times, std::string_view text) {
    std::string result;
    while (times-- > 0)
        result += text;
    return result;
}

std::string sampleWith(const std::string& count, const std::string& name = R"("x")",
                       const std::string& ratio = "1") {
    return R"([{"count":)" + count + R"(,"name":)" + name + R"(,"ratio":)" + ratio + "}]";
}

// The value stands under a key that means nothing.
std::string sampleWithUnknown(const std::string& value) {
    return sampleWith("1,\"other\":" + value);
}

std::vector<OccupiedPort> hostilePorts() {
    using Limits = std::numeric_limits<std::int64_t>;
    return {{3000, "TCP4", "node", "Node", 4312, "501", "/usr/bin/node"},
            {Limits::max(), "", "", "", Limits::min(), "", ""},
            {22, "TCP6", R"(a "b" \ /)", "\n\t\x01\x7F", 0, "\0"s, "/\u00E9\U0001F680\uFFFE"}};
}

TEST(RecordsJsonTest, WritesEveryKeyInOrder) {
    EXPECT_EQ(encodeOccupiedPorts(std::array{hostilePorts().front(), OccupiedPort()}),
              R"([{"port":3000,"proto":"TCP4","processName":"node","displayName":"Node",)"
              R"("pid":4312,"user":"501","executablePath":"/usr/bin/node"},{"port":0,"proto":"",)"
              R"("processName":"","displayName":"","pid":0,"user":"","executablePath":""}])");
    EXPECT_EQ(encodeOccupiedPorts({}), "[]");
}

TEST(RecordsJsonTest, ReadsBackWhatItWrote) {
    EXPECT_EQ(decodeOccupiedPorts(encodeOccupiedPorts(hostilePorts())), hostilePorts());
    OccupiedPort record;
    record.processName = "a\xFFz\xE2\x82";
    const auto readBack = decodeOccupiedPorts(encodeOccupiedPorts(std::array{record}));
    EXPECT_EQ(readBack.value().front().processName, "a\uFFFDz\uFFFD");
}

TEST(RecordsJsonTest, RequiresEveryKeyWithItsType) {
    const std::string whole = encodeOccupiedPorts(std::array{hostilePorts().front()});
    for (const std::string& member :
         {R"("port":3000)"s, R"("proto":"TCP4")"s, R"("processName":"node")"s, R"("pid":4312)"s,
          R"("displayName":"Node")"s, R"("user":"501")"s, R"("executablePath":"/usr/bin/node")"s}) {
        const std::string key = member.substr(0, member.find(':') + 1);
        const std::string wrongScalar = member.ends_with('"') ? "1" : R"("1")";
        for (const std::string& other :
             {R"("x":1)"s, key + "null", key + wrongScalar, key + "[]", key + "{}", key + "true"}) {
            std::string changed = whole;
            changed.replace(changed.find(member), member.size(), other);
            EXPECT_EQ(decodeOccupiedPorts(changed), std::nullopt) << changed;
        }
    }
}

TEST(RecordJsonTest, OptionalNumberMayBeAbsentOrNull) {
    const std::pair<const char*, std::optional<double>> cases[] = {
        {"", {}},
        {R"(,"ratio":null)", {}},
        {R"(,"ratio":-7)", -7.0},
        {R"(,"ratio":1.5e2)", 150.0},
        {R"(,"ratio":18446744073709551615)", 0x1p64},
        {R"(,"ratio":733363200.25)", 733363200.25}};
    for (const auto& [member, ratio] : cases) {
        const std::string text = R"({"count":1,"name":"x")"s + member + "}";
        const Sample sample{1, "x", ratio};
        EXPECT_EQ(samplesIn("[" + text + "]"), std::vector{sample}) << text;
        const std::string written = encodeRecord<Sample>(sample, kSampleFields);
        EXPECT_EQ(decodeRecord<Sample>(written, kSampleFields), sample) << written;
    }
    for (const std::optional<double> none : {std::optional<double>(), std::optional(HUGE_VAL)}) {
        EXPECT_EQ(encodeRecord<Sample>({1, "x", none}, kSampleFields), R"({"count":1,"name":"x"})");
    }
}

TEST(RecordJsonTest, AcceptsWhateverIsNotItsBusiness) {
    for (const std::string& text :
         {sampleWithUnknown("null"), sampleWithUnknown(R"([{"count":"y","count":[{}]},1e300])"),
          sampleWithUnknown(R"(1,"Count":true,"count ":{},"other":{"name":1})"),
          sampleWithUnknown("99999999999999999999"),
          sampleWithUnknown(repeated(kMaxJsonDepth - 2, "[") + repeated(kMaxJsonDepth - 2, "]")),
          "\t[\r\n{\"name\"\n:\"x\" ,  \"c\\u006funt\":1 , \"ratio\":1e0} ]\n\n"s}) {
        EXPECT_EQ(samplesIn(text), (std::vector<Sample>{{1, "x", 1.0}})) << text;
    }
    // Blanks count inside strings, also behind escapes that look like the end of one.
    EXPECT_EQ(samplesIn(sampleWith("-0", R"( "a  \"  b\\"  )")),
              (std::vector<Sample>{{0, R"(a  "  b\)", 1.0}}));
}

TEST(RecordJsonTest, RefusesDocumentsWhole) {
    const std::string good = R"({"count":1,"name":"x"})";
    std::vector<std::string> texts{"",   " ",    "null", "1",      "\"x\"", "\0"s,
                                   "{}", "[[]]", "[1]",  "[null]", good};
    const std::string open = "[" + good;
    for (const std::string& tail :
         {""s, ",]"s, ",null]"s, R"(,{"count":2}])"s, "]x"s, "] []"s, "]//"s, "]\0"s, "\0]"s})
        texts.push_back(open + tail);
    for (const std::string& count :
         {"1.0"s, "1e0"s, "01"s, "+1"s, "NaN"s, "1e999"s, "9223372036854775808"s,
          "-9223372036854775809"s, "18446744073709551615"s, repeated(100000, "9"),
          "1,\"count\":1"s})
        texts.push_back(sampleWith(count));
    for (const std::string& name :
         {"\\ud800"s, "\\udc00\\ud800"s, "\\x"s, "\n"s, "\0"s, "\xC3"s, "\xC0\x80"s,
          "\xED\xA0\x80"s, "\",\"\xFF\":\""s, "\",\"other\":\"\xF5"s})
        texts.push_back(sampleWith("1", '"' + name + '"'));
    for (const char* ratio : {"\"1\"", "1e999", "null,\"ratio\":1", "[]", "false"})
        texts.push_back(sampleWith("1", "\"x\"", ratio));
    for (const std::string& value :
         {"tru"s, "1 2"s, "[1}"s, repeated(100000, R"({"a":)") + "1" + repeated(100000, "}"),
          repeated(kMaxJsonDepth - 1, "[") + repeated(kMaxJsonDepth - 1, "]"),
          repeated(100000, "[")})
        texts.push_back(sampleWithUnknown(value));
    for (const std::string& text : texts)
        EXPECT_EQ(samplesIn(text), std::nullopt) << text.substr(0, 200);
    for (const std::string& text : {"[" + good + "]", "[]"s, "null"s, good + good, good + ","})
        EXPECT_EQ(decodeRecord<Sample>(text, kSampleFields), std::nullopt) << text;
}

TEST(RecordJsonTest, LooksAtNoMoreThanTheLimit) {
    const std::string text = "[" + std::string(kMaxJsonBytes - 2, ' ') + "]";
    EXPECT_EQ(samplesIn(text), std::vector<Sample>());
    EXPECT_EQ(samplesIn(text + ' '), std::nullopt);
    EXPECT_EQ(samplesIn(std::string(kMaxJsonBytes, '[')), std::nullopt);
}

// Each text is read in a process of its own, whose peak no other test has raised.
TEST(RecordJsonDeathTest, MemoryStaysNearTheSizeOfTheText) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer keeps several bytes for each byte in use";
#endif
    const auto peakBytes = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return std::size_t{1024} * static_cast<std::size_t>(usage.ru_maxrss);
    };
    constexpr std::size_t kBytes = std::size_t{4} * 1024 * 1024;
    for (const std::string& text : {"[" + std::string(kBytes, '\n') + "x",
                                    sampleWithUnknown("[" + repeated(kBytes / 3, "1\n,") + "x"),
                                    sampleWithUnknown("[" + repeated(kBytes / 4, "[]\n,") + "x")}) {
        const auto read = [&] {
            const std::size_t before = peakBytes();
            const bool isRefused = !samplesIn(text);
            std::exit(isRefused && peakBytes() - before < 12 * kBytes ? 0 : 1);
        };
        EXPECT_EXIT(read(), testing::ExitedWithCode(0), "");
    }
}

TEST(RecordsJsonTest, DamagedTextIsRefusedOrReadsAsSomethingWritable) {
    const std::string whole = encodeOccupiedPorts(hostilePorts());
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(decodeOccupiedPorts(whole.substr(0, length)), std::nullopt) << length;

    std::mt19937 random(7); // NOLINT: the same damage in every run
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    int accepted = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text = whole;
        for (std::size_t changes = 1 + below(3); changes > 0; --changes) {
            const std::size_t position = below(text.size());
            const std::size_t choice = below(4);
            if (choice == 0)
                text[position] = static_cast<char>(below(256));
            else if (choice == 1)
                text[position] = R"({}[],:"\0e.-)"[below(12)];
            else if (choice == 2)
                text.erase(position, 1 + below(4));
            else
                text.insert(position, whole, below(whole.size()), below(20));
        }
        if (const auto records = decodeOccupiedPorts(text)) {
            ++accepted;
            EXPECT_EQ(decodeOccupiedPorts(encodeOccupiedPorts(*records)), records) << text;
        }
    }
    EXPECT_GT(accepted, 100);
}

} // namespace
} // namespace zenlot
