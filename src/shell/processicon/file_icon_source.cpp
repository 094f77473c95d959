#include "shell/processicon/file_icon_source.h"

namespace zenlot {

void FileIconSource::setIconName(const QString& iconName) {
    if (iconName == iconName_)
        return;
    iconName_ = iconName;
    Q_EMIT iconNameChanged();
    restart();
}

void FileIconSource::setPath(const QString& path) {
    if (path == path_)
        return;
    path_ = path;
    Q_EMIT pathChanged();
    restart();
}

IconSource::Search FileIconSource::search() const {
    return [iconName = iconName_, path = path_](const ProcessIconProvider& provider,
                                                const IconFrame& frame) {
        if (const QUrl named = provider.iconNamed(iconName, frame); !named.isEmpty())
            return named;
        return provider.iconOfFile(path, frame);
    };
}

} // namespace zenlot
