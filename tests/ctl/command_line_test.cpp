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
    std::istringstream lines(
        "\nlsit\nlist -j\ndoctor me\nlist --json 80\nlist --json --offers\ncheck\n"
        "why\nwhy 80 81\nwhy --json\nstop --json 80\nstop --yes\ncheck 80 81\n"
        "check 0\ncheck -1\ncheck 65536\ncheck 80x\n"
        "check 99999999999999999999\n--help list\na\x1b[2J");
    for (std::string line; std::getline(lines, line);) {
        const Command command = parse(line);
        ASSERT_TRUE(std::holds_alternative<UsageError>(command)) << line;
        const std::string& message = std::get<UsageError>(command).message;
        EXPECT_FALSE(message.empty());
        EXPECT_EQ(message.find_first_of("\n\x1b"), std::string::npos) << message;
    }
}

} // namespace
} // namespace zenlot
