#include "shell/processicon/file_icon_source.h"

namespace zenlot {

void FileIconSource::setPath(const QString& path) {
    if (path == path_)
        return;
    path_ = path;
    Q_EMIT pathChanged();
    restart();
}

IconSource::Search FileIconSource::search() const {
    return [path = path_](const ProcessIconProvider& provider, const IconFrame& frame) {
        return provider.iconOfFile(path, frame);
    };
}

} // namespace zenlot
