#include "platform/linux/xdg_home_directories.h"

#include <gtest/gtest.h>

#include <pwd.h>
#include <unistd.h>

namespace zenlot {

using namespace Qt::StringLiterals;

TEST(XdgHomeDirectories, LieBelowTheHomeUnlessAnAbsolutePathIsGiven) {
    const passwd* user = ::getpwuid(::getuid());
    QProcessEnvironment environment;
    environment.insert(u"HOME"_s, u"there"_s);
    EXPECT_EQ(xdgHomeDirectories(environment).home,
              QString::fromUtf8(user != nullptr ? user->pw_dir : "/"));
    environment.insert(u"HOME"_s, u"/home/ä/"_s);
    environment.insert(u"XDG_CONFIG_HOME"_s, u"/c/"_s);
    environment.insert(u"XDG_DATA_HOME"_s, u"./share"_s);
    const HomeDirectories expected{u"/home/ä"_s, u"/c"_s, u"/home/ä/.local/state"_s,
                                   u"/home/ä/.local/share"_s};
    EXPECT_EQ(xdgHomeDirectories(environment), expected);
}

} // namespace zenlot
