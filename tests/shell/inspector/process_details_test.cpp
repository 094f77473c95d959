#include "inventory/fake_process_inspector.h"
#include "shell/inspector/process_details_collector.h"
#include "shell/inspector/process_details_text.h"
#include "text/display_line.h"

#include <gtest/gtest.h>

#include <tuple>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

constexpr std::uint64_t kKiB = 1024;
constexpr std::uint64_t kMiB = 1024 * kKiB;
constexpr std::uint64_t kGiB = 1024 * kMiB;
constexpr std::uint64_t kMost = ~std::uint64_t{0};

TEST(ProcessDetailsTextTest, SizesAreCutOffWithTheirUnit) {
    const std::tuple<std::uint64_t, QString, QString> cases[]{
        {0, u"0 KB"_s, u"0 MB"_s},
        {kMiB - 1, u"1023 KB"_s, u"0 MB"_s},
        {kMiB, u"1 MB"_s, u"1 MB"_s},
        {kMiB * 3 / 2, u"1 MB"_s, u"1 MB"_s},
        {kGiB - 1, u"1023 MB"_s, u"1023 MB"_s},
        {kGiB, u"1024 MB"_s, u"1 GB"_s},
        {kMost, u"17592186044415 MB"_s, u"17179869183 GB"_s}};
    for (const auto& [bytes, resident, virtualSize] : cases) {
        EXPECT_EQ(residentSizeText(bytes), resident);
        EXPECT_EQ(virtualSizeText(bytes), virtualSize);
    }
}

TEST(ProcessDetailsTextTest, AgeGrowsUnits) {
    const std::pair<int, QString> cases[]{
        {-5, u"0:00"_s},        {0, u"0:00"_s},           {59, u"0:59"_s},
        {60, u"1:00"_s},        {3599, u"59:59"_s},       {3600, u"1:00:00"_s},
        {86399, u"23:59:59"_s}, {86400, u"1-00:00:00"_s}, {1047845, u"12-03:04:05"_s}};
    for (const auto& [seconds, expected] : cases)
        EXPECT_EQ(elapsedText(std::chrono::seconds(seconds)), expected);
}

TEST(ProcessDetailsTextTest, SharesAreCutOffAfterOneDecimal) {
    EXPECT_EQ(cpuShareText(3199ms, 100s), u"3.1%"_s);
    EXPECT_EQ(cpuShareText(99ms, 100s), u"0.0%"_s);
    EXPECT_EQ(cpuShareText(399'990ms, 100s), u"399.9%"_s);
    EXPECT_EQ(cpuShareText(5s, 0s), u"0.0%"_s);
    EXPECT_EQ(cpuShareText(5s, -9s), u"0.0%"_s);
    EXPECT_EQ(memoryShareText(312 * kMiB, 16 * kGiB), u"1.9%"_s);
    EXPECT_EQ(memoryShareText(kMost, kMost), u"100.0%"_s) << "no overflow";
    EXPECT_EQ(memoryShareText(kMiB, 0), QString());
}

TEST(ProcessDetailsTextTest, LinesOfOthersStayLines) {
    const std::pair<QString, QString> cases[]{
        {u"a b <b>\u05D0\U0001F600"_s, u"a b <b>\u05D0\U0001F600"_s},
        {u"a\nb\u2028\u001B\u202Ey\u2067"_s, u"a\uFFFDb\uFFFD\uFFFD\uFFFDy\uFFFD"_s},
        {QString(256, u'x'), QString(256, u'x')},
        {QString(257, u'x'), QString(256, u'x') + u"\u2026"_s},
        {QString(255, u'x') + u"\U0001F600"_s, QString(255, u'x') + u"\u2026"_s}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(displayLine(text), expected);
}

class ProcessDetailsCollectorTest : public testing::Test {
  protected:
    ProcessDetails collect(qint64 pid = 7, const QLocale& locale = QLocale(QLocale::English)) {
        return ProcessDetailsCollector(
                   inspector, [this] { return std::chrono::system_clock::time_point(now); }, locale,
                   QTimeZone("Europe/Berlin"))
            .collectProcessDetails(pid);
    }

    std::chrono::milliseconds now{1'741'162'051'999};
    FakeProcessInspector inspector;
    ProcessFacts& facts = inspector.processes[7];
};

TEST_F(ProcessDetailsCollectorTest, WritesDownTheStartAsTheUserDoes) {
    facts.task = TaskInfo{1, ProcessState::sleeping, 1'741'162'051s - 100s, 0, 0, 3100ms};
    EXPECT_EQ(collect().startDate, u"Mar 5 09:05:51 2025"_s);
    EXPECT_EQ(collect().cpuPercent, u"3.1%"_s);
    EXPECT_EQ(collect(7, QLocale(QLocale::German)).startDate, u"M\u00E4rz 5 09:05:51 2025"_s);
}

TEST_F(ProcessDetailsCollectorTest, WhatIsNotKnownIsEmpty) {
    EXPECT_EQ(collect(8), ProcessDetails());
    facts.descriptorCount = 3;
    EXPECT_EQ(collect((qint64{1} << 32) + 7), ProcessDetails()) << "no pid is cut to 32 bits";
    ProcessDetails expected;
    expected.openFileCount = 3;
    EXPECT_EQ(collect(), expected);

    facts.task = TaskInfo{99, ProcessState::unknown, 0s, 0, 2 * kMiB, 50ms};
    expected.parentPID = 99;
    expected.residentMB = u"2 MB"_s;
    expected.virtualMB = u"0 MB"_s;
    EXPECT_EQ(collect(), expected) << "no age without a start, and no share without an age";

    facts.task->startTime = std::chrono::ceil<std::chrono::seconds>(now) + 60s;
    EXPECT_EQ(collect().elapsed, u"0:00"_s);
    facts.task->startTime = std::chrono::seconds::max();
    EXPECT_EQ(collect().elapsed, u"0:00"_s);
}

} // namespace
} // namespace zenlot
