#include "shell/processicon/file_icon_source.h"

namespace zenlot {

void FileIconSource::setIcon(const QString& icon) {
    if (icon == icon_)
        return;
    icon_ = icon;
    Q_EMIT iconChanged();
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
    return
        [icon = icon_, path = path_](const ProcessIconProvider& provider, const IconFrame& frame) {
            if (const QUrl named = provider.iconNamed(icon, frame); !named.isEmpty())
                return named;
            return provider.iconOfFile(path, frame);
        };
}

} // namespace zenlot
