#include "platform/linux/xdg_data_directories.h"

#include <QDir>

namespace zenlot {

using namespace Qt::StringLiterals;

QStringList xdgDataDirectories(const HomeDirectories& home,
                               const QProcessEnvironment& environment) {
    QStringList directories{home.dataHome};
    const QString named = environment.value(u"XDG_DATA_DIRS"_s);
    for (const QString& directory : named.split(u':', Qt::SkipEmptyParts)) {
        if (QDir::isAbsolutePath(directory))
            directories.append(QDir::cleanPath(directory));
    }
    if (directories.size() == 1)
        directories << u"/usr/local/share"_s << u"/usr/share"_s;
    directories.removeDuplicates();
    return directories;
}

} // namespace zenlot
