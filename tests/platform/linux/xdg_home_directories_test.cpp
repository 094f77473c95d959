#include "platform/linux/xdg_home_directories.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

#include <initializer_list>
#include <utility>

namespace zenlot {
namespace {

QProcessEnvironment environment(std::initializer_list<std::pair<const char*, const char*>> values) {
    QProcessEnvironment result;
    for (const auto& [name, value] : values)
        result.insert(QString::fromUtf8(name), QString::fromUtf8(value));
    return result;
}

TEST(XdgHomeDirectories, LieBelowTheHomeUnlessAnAbsolutePathIsGiven) {
    const HomeDirectories usual{QStringLiteral("/home/ä"), QStringLiteral("/home/ä/.config"),
                                QStringLiteral("/home/ä/.local/state"),
                                QStringLiteral("/home/ä/.local/share")};
    EXPECT_EQ(xdgHomeDirectories(environment({{"HOME", "/home/ä/"}})), usual);
    EXPECT_EQ(xdgHomeDirectories(environment({{"HOME", "/home/ä"},
                                              {"XDG_CONFIG_HOME", ""},
                                              {"XDG_STATE_HOME", "state"},
                                              {"XDG_DATA_HOME", "./share"}})),
              usual);
    EXPECT_EQ(xdgHomeDirectories(environment(
                  {{"HOME", "/"}, {"XDG_CONFIG_HOME", "/c/"}, {"XDG_STATE_HOME", "/s"}})),
              (HomeDirectories{QStringLiteral("/"), QStringLiteral("/c"), QStringLiteral("/s"),
                               QStringLiteral("/.local/share")}));
}

TEST(XdgHomeDirectories, AsksTheUserDatabaseWithoutAUsableHome) {
    const passwd* entry = ::getpwuid(::getuid());
    if (entry == nullptr || entry->pw_dir[0] != '/')
        GTEST_SKIP() << "the user database knows no home";
    const QString home = QString::fromUtf8(entry->pw_dir);
    EXPECT_EQ(xdgHomeDirectories(QProcessEnvironment()).home, home);
    EXPECT_EQ(xdgHomeDirectories(environment({{"HOME", "there"}})).home, home);
}

} // namespace
} // namespace zenlot
