#include "ctl/command_line.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace zenlot {
namespace {

// The words as a shell would part them.
Command parse(const std::string& line) {
    std::istringstream stream(line);
    const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
    const std::vector<std::string_view> views(words.begin(), words.end());
    return parseCommandLine(views);
}

// The others are tried with the program itself.
TEST(CommandLineTest, UnderstandsItsOptions) {
    EXPECT_EQ(std::get<ListCommand>(parse("list --offers")).listing, Listing::offers);
    EXPECT_EQ(std::get<CheckCommand>(parse("check 08080")).port, 8080);
    EXPECT_EQ(std::get<StopCommand>(parse("stop 80")).consent, Consent::asked);
    EXPECT_EQ(std::get<StopCommand>(parse("stop 80 --yes")).consent, Consent::given);
    EXPECT_EQ(std::get<WhyCommand>(parse("why 80 --json")).format, Format::json);
}

TEST(CommandLineTest, BadUsageIsExplainedInOneLine) {
    for (const char* line : {"",
                             "lsit",
                             "list -j",
                             "doctor me",
                             "list --json 80",
                             "list --json --offers",
                             "check",
                             "why",
                             "why 80 81",
                             "why --json",
                             "stop --json 80",
                             "stop --yes",
                             "check 80 81",
                             "check 0",
                             "check -1",
                             "check 65536",
                             "check 80x",
                             "check 99999999999999999999",
                             "--help list",
                             "a\x1b[2J"}) {
        const Command command = parse(line);
        ASSERT_TRUE(std::holds_alternative<UsageError>(command)) << line;
        const std::string& message = std::get<UsageError>(command).message;
        EXPECT_FALSE(message.empty());
        EXPECT_EQ(message.find_first_of("\n\x1b"), std::string::npos) << message;
    }
}

} // namespace
} // namespace zenlot
