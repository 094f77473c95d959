#include "platform/linux/xdg_data_directories.h"

#include <QDir>

namespace zenlot {

QStringList xdgDataDirectories(const HomeDirectories& home,
                               const QProcessEnvironment& environment) {
    QStringList directories{home.dataHome};
    const QString named = environment.value(QStringLiteral("XDG_DATA_DIRS"));
    for (const QString& directory : named.split(u':', Qt::SkipEmptyParts)) {
        if (QDir::isAbsolutePath(directory))
            directories.append(QDir::cleanPath(directory));
    }
    if (directories.size() == 1)
        directories << QStringLiteral("/usr/local/share") << QStringLiteral("/usr/share");
    directories.removeDuplicates();
    return directories;
}

} // namespace zenlot
