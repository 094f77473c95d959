#include "platform/linux/xdg_home_directories.h"

#include <QDir>
#include <QFile>

#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

QString homeFromUserDatabase() {
    constexpr std::size_t kLargestEntry = std::size_t{1} << 20U;
    std::vector<char> buffer(1024);
    passwd entry{};
    passwd* found = nullptr;
    int status = ERANGE;
    while ((status = getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found)) ==
               ERANGE &&
           buffer.size() < kLargestEntry)
        buffer.resize(buffer.size() * 2);
    return status == 0 && found != nullptr ? QFile::decodeName(found->pw_dir) : QString();
}

// The path in its plain form when it is absolute, otherwise nothing.
QString absoluteOrEmpty(const QString& path) {
    return path.startsWith(u'/') ? QDir::cleanPath(path) : QString();
}

} // namespace

HomeDirectories xdgHomeDirectories(const QProcessEnvironment& environment) {
    HomeDirectories directories;
    directories.home = absoluteOrEmpty(environment.value(u"HOME"_s));
    if (directories.home.isEmpty())
        directories.home = absoluteOrEmpty(homeFromUserDatabase());
    if (directories.home.isEmpty())
        directories.home = u"/"_s;

    const auto directory = [&](const QString& variable, const QString& belowHome) {
        const QString chosen = absoluteOrEmpty(environment.value(variable));
        return chosen.isEmpty() ? QDir(directories.home).filePath(belowHome) : chosen;
    };
    directories.configHome = directory(u"XDG_CONFIG_HOME"_s, u".config"_s);
    directories.stateHome = directory(u"XDG_STATE_HOME"_s, u".local/state"_s);
    directories.dataHome = directory(u"XDG_DATA_HOME"_s, u".local/share"_s);
    return directories;
}

} // namespace zenlot
