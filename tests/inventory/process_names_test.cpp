#include "inventory/process_names.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace zenlot {
namespace {

using namespace std::string_literals;

TEST(ProcessIdentityTest, NamesForPeople) {
    using Case = std::tuple<const char*, const char*, const char*>;
    for (const auto& [path, processName, expected] :
         {Case("/A/Outer.app/Contents/Sample Helper.app/MacOS/x", "", "Sample Helper"),
          Case("/A/Foo.app/Contents/Frameworks/BarKit.framework/x", "", "Bar Kit"),
          Case("/A/BarKit.framework/xPanel2.app", "", "x Panel2"), Case("/A/.app/x", "sshd", ""),
          Case("/A/Foo.APP/Foo.app.old/Fooapp/x", "sshd", "Sshd"), Case("", "", ""),
          Case("", "MySQLServer", "My SQL Server"), Case("", "\xFFx", "\xFFx"),
          Case("", "\u00E9lan", "\u00C9lan"), Case("", "e\u0301lan", "E\u0301lan"),
          Case("", "\u00DFx", "S Sx")}) // grows to two letters, which are then spaced
        EXPECT_EQ(makeDisplayName(path, processName), expected) << path << processName;
    EXPECT_EQ(processNameOf("/usr/local/bin/cachesrv"), "cachesrv");
    EXPECT_EQ(processNameOf("/usr/"), "");
}

TEST(ProcessIdentityTest, CommandExecutableIsTheFirstExistingExtension) {
    const TemporaryFolder folder;
    folder.write("My App", "");
    folder.write("My App --flag", "");
    folder.write("My  Folder/file", "");
    folder.link("a  link", "My App");
    const std::string root = folder.path().string() + '/';
    const std::pair<std::string, std::string> cases[] = {{"My App --flag", "My App"},
                                                         {"My App\0"s, "My"},
                                                         {"My  Folder x", "My"},
                                                         {"a  link x", "a  link"}};
    for (const auto& [command, expected] : cases)
        EXPECT_EQ(resolveCommandExecutable(root + command), root + expected);
    EXPECT_EQ(resolveCommandExecutable("A/My App"), "A/My");
    std::string endless = "/";
    while (endless.size() < 1'000'000)
        endless += "x ";
    int queries = 0;
    const auto count = [&queries](const std::string&) { return ++queries > 5000; };
    EXPECT_EQ(resolveCommandExecutable(endless, count), "/x");
}

TEST(ProcessIdentityTest, SanitizedUtf8) {
    const std::pair<const char*, const char*> cases[] = {
        {"\u00E9\U0001F680\uFFFD", "\u00E9\U0001F680\uFFFD"},
        {"a\xE2\x82z\xF0\x9F\x9A", "a\uFFFDz\uFFFD"}, // cut short: one mark for each beginning
        {"\xFF\xC0\x80\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"}};
    for (const auto& [bytes, expected] : cases)
        EXPECT_EQ(sanitizedUtf8(bytes), expected) << expected;
}

} // namespace
} // namespace zenlot
