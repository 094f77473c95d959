#include "inventory/process_identity.h"

#include <gtest/gtest.h>

#include <regex.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>

namespace zenlot {
namespace {

TEST(ProcessIdentityTest, ProcessNameIsTheLastComponent) {
    EXPECT_EQ(processNameOf("/usr/local/bin/cachesrv"), "cachesrv");
    EXPECT_EQ(processNameOf("cachesrv"), "cachesrv");
    EXPECT_EQ(processNameOf("/usr/"), "");
    EXPECT_EQ(processNameOf(""), "");
}

TEST(ProcessIdentityTest, DisplayNameIsThatOfTheInnermostBundle) {
    const std::pair<const char*, const char*> cases[] = {
        {"/A/Sample Editor.app/Contents/Sample Helper.app/Contents/MacOS/x", "Sample Helper"},
        {"/A/MediaKit.framework/Versions/A/Services/render.bundle/MacOS/x", "Media Kit"},
        {"/A/Foo.app/Contents/Frameworks/BarKit.framework/x", "Bar Kit"},
        {"/A/BarKit.framework/Foo.app/x", "Foo"},
        {"NoteTakerPlus.app", "Note Taker Plus"},
        {"/A/.app/x", ""},
        {"/A/.framework//x/", ""},
        {"/A/Foo.APP/Foo.app.old/Fooapp/x", "Sshd"},
        {"/usr/sbin/sshd", "Sshd"}};
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(makeDisplayName(path, "sshd"), expected) << path;
}

TEST(ProcessIdentityTest, DisplayNameElseHasACapitalFirstCharacter) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"mysqlServer", "Mysql Server"},
        {"7zip", "7zip"},
        {"\u00E9lan", "\u00C9lan"},
        {"e\u0301lan", "E\u0301lan"},
        {"i\u00E9", "I\u00E9"},
        {"\u00DFx", "S Sx"},                          // grows to two letters, which are then spaced
        {"\u01C6x", "\u01C4x"},                       // a digraph also has a title case
        {"\u03B1\u0345\u03B2", "\u0391\u0399\u03B2"}, // this mark has an upper case of its own
        {"a\u0345b", "A\u0399b"},
        {"\U00010428x", "\U00010400x"},
        {"\U0001F680rocket", "\U0001F680rocket"},
        {"\xFFx", "\xFFx"}};
    for (const auto& [processName, expected] : cases)
        EXPECT_EQ(makeDisplayName("", processName), expected) << processName;
}

// Puts a space between the two groups of every match.
std::string spacedByPattern(const char* pattern, const std::string& text) {
    regex_t compiled;
    EXPECT_EQ(regcomp(&compiled, pattern, REG_EXTENDED), 0);
    std::string spaced;
    const char* rest = text.c_str();
    regmatch_t match[2];
    while (regexec(&compiled, rest, 2, match, 0) == 0) {
        spaced.append(rest, rest + match[1].rm_eo) += ' ';
        spaced.append(rest + match[1].rm_eo, rest + match[0].rm_eo);
        rest += match[0].rm_eo;
    }
    regfree(&compiled);
    return spaced + rest;
}

TEST(ProcessIdentityTest, CamelCaseSplitsLikeTheTwoPatterns) {
    EXPECT_EQ(splitCamelCase("MySQLServer"), "My SQL Server");
    EXPECT_EQ(splitCamelCase("xPanel2"), "x Panel2");
    EXPECT_EQ(splitCamelCase("\u00C9a\u00C9B"), "\u00C9a\u00C9B");
    std::mt19937 random(7); // NOLINT: the same texts in every run
    for (int round = 0; round < 10000; ++round) {
        std::string text;
        for (auto length = random() % 12; length > 0; --length)
            text += "azAZAZ1. "[random() % 9];
        const std::string once = spacedByPattern("([a-z])([A-Z])", text);
        EXPECT_EQ(splitCamelCase(text), spacedByPattern("([A-Z]+)([A-Z][a-z])", once)) << text;
    }
}

TEST(ProcessIdentityTest, EnclosingAppBundlePath) {
    const std::pair<const char*, const char*> cases[] = {
        {"/A/Foo.app/Contents/MacOS/foo", "/A/Foo.app"},
        {"/A/Outer.app/Helpers/Inner.app/MacOS/x", "/A/Outer.app/Helpers/Inner.app"},
        {"/A/Foo.app//", "/A/Foo.app"},
        {"/Foo.app", "/Foo.app"},
        {"/A//Foo.app//x", "/A//Foo.app"},
        {"/.app/x", "/.app"},
        {"A/Foo.app/x", "A/Foo.app"}};
    for (const auto& [path, expected] : cases)
        EXPECT_EQ(enclosingAppBundlePath(path), expected) << path;
    // A relative bundle that stands first is a lone component, which is too few.
    for (const char* path : {"Foo.app/x", "Foo.app", "/A/Foo.App/x", "/A/Foo.app.bak/x",
                             "/A/Fooapp/x", "/usr/local/bin/cachesrv", "/", "//", ""})
        EXPECT_EQ(enclosingAppBundlePath(path), std::nullopt) << path;
}

TEST(ProcessIdentityTest, CommandExecutableIsTheFirstExistingExtension) {
    const std::set<std::string> files{"/A/My App", "/A/My App --flag", "/A/My", "/2  blanks",
                                      "/b "};
    std::size_t queries = 0;
    const FileQuery isFile = [&](const std::string& path) {
        ++queries;
        return files.contains(path);
    };
    const std::pair<const char*, const char*> cases[] = {{"/A/My App --flag", "/A/My App"},
                                                         {"/A/My", "/A/My"},
                                                         {"/A/My Other --flag", "/A/My"},
                                                         {"/2  blanks x", "/2  blanks"},
                                                         {"/b  c", "/b "},
                                                         {"python3 -m x", "python3"},
                                                         {"/usr/bin/x y", "/usr/bin/x"},
                                                         {" /A/My App", ""},
                                                         {"A/My App", "A/My"},
                                                         {"", ""}};
    for (const auto& [command, expected] : cases)
        EXPECT_EQ(resolveCommandExecutable(command, isFile), expected) << command;

    std::string endless = "/";
    while (endless.size() < 1'000'000)
        endless += "x ";
    queries = 0;
    EXPECT_EQ(resolveCommandExecutable(endless, isFile), "/x");
    EXPECT_LT(queries, 5000U);
}

TEST(ProcessIdentityTest, FileQueryFollowsLinksAndLeavesOutDirectories) {
    std::string folder = (std::filesystem::temp_directory_path() / "zenlot-XXXXXX").string();
    ASSERT_NE(mkdtemp(folder.data()), nullptr);
    std::ofstream(folder + "/my file") << 'x';
    std::filesystem::create_symlink("my file", folder + "/link");
    std::filesystem::create_symlink("nowhere", folder + "/broken");
    EXPECT_TRUE(isExistingFile(folder + "/my file"));
    EXPECT_TRUE(isExistingFile(folder + "/link"));
    for (const std::string& path :
         {folder, folder + "/broken", folder + "/my file/x", folder + "/my file" + '\0' + "tail",
          folder + "/" + std::string(300, 'x'), std::string()})
        EXPECT_FALSE(isExistingFile(path)) << path;
    EXPECT_EQ(resolveCommandExecutable(folder + "/my file --flag"), folder + "/my file");
    std::filesystem::remove_all(folder);
}

TEST(ProcessIdentityTest, SanitizedUtf8) {
    const std::pair<const char*, const char*> cases[] = {
        {"", ""},
        {"plain", "plain"},
        {"\u00E9\u20AC\U0001F680\uFFFD", "\u00E9\u20AC\U0001F680\uFFFD"},
        {"a\xFFz", "a\uFFFDz"},
        {"a\xE2\x82z\xF0\x9F\x9A", "a\uFFFDz\uFFFD"}, // cut short: one mark for each beginning
        {"\xC0\x80", "\uFFFD\uFFFD"},                 // overlong
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"},       // half of a surrogate pair
        {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"}};
    for (const auto& [bytes, expected] : cases)
        EXPECT_EQ(sanitizedUtf8(bytes), expected) << expected;
}

} // namespace
} // namespace zenlot
