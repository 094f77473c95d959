#include "inventory/linux/proc_stat.h"

#include <gtest/gtest.h>

#include <string>

namespace zenlot {
namespace {

std::string stat(const std::string& name, const std::string& state) {
    return "42 (" + name + ") " + state +
           " 41 5 6 7 8 9 10 11 12 13 200 300 16 17 18 19 20 21 4500 23 24 25\n";
}

TEST(ProcStatTest, NameMayHoldAnything) {
    for (const char* name : {"server", "", "a b", ")", ") R 1 2 (", "x\n) S 7\n", "\xff\x01"})
        EXPECT_EQ(decodeProcessStat(stat(name, "S")),
                  (ProcessStat{name, ProcessState::sleeping, 41, 500, 4500, 6, true}))
            << name;
}

TEST(ProcStatTest, Letters) {
    using enum ProcessState;
    const std::pair<std::string, ProcessState> letters[]{
        {"R", runnable}, {"S", sleeping}, {"D", sleeping}, {"I", sleeping}, {"T", stopped},
        {"t", stopped},  {"Z", zombie},   {"X", unknown},  {"RR", unknown}};
    for (const auto& [letter, expected] : letters)
        EXPECT_EQ(decodeProcessStat(stat("x", letter))->state, expected) << letter;
}

TEST(ProcStatTest, WhatIsNotWholeIsNothing) {
    const std::string whole = stat("x", "S");
    // Up to the start time; a shorter number can't be told from a whole one.
    for (std::size_t length = 0; length < whole.find("4500"); ++length)
        EXPECT_FALSE(decodeProcessStat(whole.substr(0, length))) << length;
    EXPECT_FALSE(decodeStatm("12 x"));
    EXPECT_EQ(decodeBootTime("cpu  1 2\nxbtime 5\nbtime 1700000000\nprocesses 9\n"), 1700000000);
    EXPECT_EQ(decodeBootTime("cpu  1 2\nbtime\n"), std::nullopt);
}

} // namespace
} // namespace zenlot
