#include "ctl/command_line.h"

#include <gtest/gtest.h>

#include <vector>

namespace zenlot {
namespace {

Command parse(std::vector<std::string_view> words) {
    return parseCommandLine(words);
}

TEST(CommandLineTest, UnderstandsItsCommands) {
    EXPECT_EQ(std::get<ListCommand>(parse({"list"})).listing, Listing::text);
    EXPECT_EQ(std::get<ListCommand>(parse({"list", "--json"})).listing, Listing::json);
    EXPECT_EQ(std::get<ListCommand>(parse({"list", "--offers"})).listing, Listing::offers);
    EXPECT_EQ(std::get<DoctorCommand>(parse({"doctor", "--json"})).format, Format::json);
    EXPECT_EQ(std::get<CheckCommand>(parse({"check", "08080"})).port, 8080);
    EXPECT_EQ(std::get<StopCommand>(parse({"stop", "80"})).consent, Consent::asked);
    EXPECT_EQ(std::get<StopCommand>(parse({"stop", "80", "--yes"})).consent, Consent::given);
    EXPECT_EQ(std::get<WhyCommand>(parse({"why", "80"})).format, Format::text);
    EXPECT_EQ(std::get<WhyCommand>(parse({"why", "80", "--json"})).port, 80);
    EXPECT_EQ(std::get<WhyCommand>(parse({"why", "--json", "80"})).format, Format::json);
    EXPECT_TRUE(std::holds_alternative<HelpCommand>(parse({"--help"})));
    EXPECT_TRUE(std::holds_alternative<VersionCommand>(parse({"--version"})));
}

TEST(CommandLineTest, BadUsageIsExplainedInOneLine) {
    using Words = std::vector<std::string_view>;
    for (const Words& words : {Words{},
                               Words{"lsit"},
                               Words{"list", "-j"},
                               Words{"doctor", "me"},
                               Words{"list", "--json", "80"},
                               Words{"list", "--json", "--offers"},
                               Words{"check"},
                               Words{"why"},
                               Words{"why", "80", "81"},
                               Words{"why", "--json"},
                               Words{"stop", "--json", "80"},
                               Words{"stop", "--yes"},
                               Words{"check", "80", "81"},
                               Words{"check", ""},
                               Words{"check", "0"},
                               Words{"check", "-1"},
                               Words{"check", "65536"},
                               Words{"check", "80x"},
                               Words{"check", "99999999999999999999"},
                               Words{"--help", "list"},
                               Words{"a\nb\x1b[2J"}}) {
        const Command command = parse(words);
        ASSERT_TRUE(std::holds_alternative<UsageError>(command)) << words.size();
        const std::string& message = std::get<UsageError>(command).message;
        EXPECT_FALSE(message.empty());
        EXPECT_EQ(message.find_first_of("\n\x1b"), std::string::npos) << message;
    }
}

} // namespace
} // namespace zenlot
