#include "platform/linux/icon_themes.h"

#include "platform/linux/key_file.h"
#include "platform/linux/user_file.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 kMaximumIndexBytes = qint64{1} * 1024 * 1024;
constexpr qsizetype kMostThemes = 16;
constexpr qsizetype kMostAnswers = 4096;
constexpr int kUsualThreshold = 2;
constexpr int kHarmOfEnlarging = 3; // as against shrinking
constexpr int kLargestSize = 4096;
constexpr char kThemeGroup[] = "Icon Theme";

// How badly a picture made for some sizes fits another.
int misfit(int smallest, int largest, int size) {
    if (size < smallest)
        return smallest - size;
    return size > largest ? kHarmOfEnlarging * (size - largest) : 0;
}

} // namespace

IconThemes::IconThemes(QStringList iconDirectories, const QStringList& pictureDirectories)
    : iconDirectories_(std::move(iconDirectories)),
      pictureDirectories_(iconDirectories_ + pictureDirectories) {}

QString IconThemes::pictureFile(const QString& name, const QString& theme, int sizeInPixels) {
    if (name.isEmpty() || name.contains(u'/') || theme.contains(u'/'))
        return {};
    const std::scoped_lock lock(mutex_);
    if (!stamps_ || !stamps_->areCurrent() || answers_.size() >= kMostAnswers) {
        answers_.clear();
        themes_.clear();
        stamps_.emplace();
        for (const QString& directory : std::as_const(pictureDirectories_))
            stamps_->add(directory);
    }
    const QString key = u"%1/%2/%3"_s.arg(theme, name).arg(sizeInPixels);
    const auto known = answers_.constFind(key);
    return known != answers_.constEnd() ? *known
                                        : *answers_.insert(key, find(name, theme, sizeInPixels));
}

const IconThemes::Theme& IconThemes::theme(const QString& name) {
    if (const auto known = themes_.constFind(name); known != themes_.constEnd())
        return *known;
    Theme theme;
    std::optional<KeyFile> index;
    for (const QString& directory : std::as_const(iconDirectories_)) {
        const QString folder = directory + u'/' + name;
        stamps_->add(folder);
        const UserFile file = readUserFile(folder + u"/index.theme"_s, kMaximumIndexBytes);
        if (!index && file.state == UserFile::State::read)
            index.emplace(file.content);
    }
    if (index) {
        theme.parents = index->list(kThemeGroup, "Inherits", u',');
        const QStringList folders = index->list(kThemeGroup, "Directories", u',') +
                                    index->list(kThemeGroup, "ScaledDirectories", u',');
        for (const QString& path : folders) {
            const QByteArray group = path.trimmed().toUtf8();
            const auto pixels = [&](const char* key, int otherwise) {
                return std::clamp(index->number(group, key, otherwise), 0, kLargestSize);
            };
            const int scale = std::max(1, pixels("Scale", 1));
            const int size = pixels("Size", 0);
            const int threshold = pixels("Threshold", kUsualThreshold);
            const QString type = index->text(group, "Type");
            Folder folder{{}, size, size};
            if (type == QLatin1String("Scalable"))
                folder = {{}, pixels("MinSize", size), pixels("MaxSize", size)};
            else if (type != QLatin1String("Fixed"))
                folder = {{}, size - threshold, size + threshold};
            folder.smallest *= scale;
            folder.largest *= scale;
            for (const QString& directory : std::as_const(iconDirectories_)) {
                const QString place = u"%1/%2/%3"_s.arg(directory, name, path.trimmed());
                if (size > 0 && QFileInfo(place).isDir())
                    folder.places.append(place);
            }
            if (!folder.places.isEmpty())
                theme.folders.push_back(std::move(folder));
        }
    }
    return *themes_.insert(name, theme);
}

QStringList IconThemes::themesFrom(const QString& first) {
    QStringList order;
    QStringList waiting{first, u"hicolor"_s, u"Adwaita"_s, u"breeze"_s};
    while (!waiting.isEmpty() && order.size() < kMostThemes) {
        const QString name = waiting.takeFirst().trimmed();
        if (name.isEmpty() || name.contains(u'/') || order.contains(name))
            continue;
        order.append(name);
        // hicolor, from which every theme inherits, keeps its place behind them all.
        QStringList parents = theme(name).parents;
        parents.removeAll(u"hicolor"_s);
        waiting = parents + waiting;
    }
    return order;
}

QString IconThemes::find(const QString& name, const QString& firstTheme, int sizeInPixels) {
    for (const QString& themeName : themesFrom(firstTheme)) {
        std::vector<const Folder*> folders;
        for (const Folder& folder : theme(themeName).folders)
            folders.push_back(&folder);
        std::ranges::stable_sort(folders, {}, [&](const Folder* folder) {
            return misfit(folder->smallest, folder->largest, sizeInPixels);
        });
        for (const Folder* folder : folders) {
            for (const QString& place : folder->places) {
                if (const std::optional<QString> file = findInFolder(place, name))
                    return *file;
            }
        }
    }
    for (const QString& directory : std::as_const(pictureDirectories_)) {
        if (const std::optional<QString> file = findInFolder(directory, name))
            return *file;
    }
    return {};
}

std::optional<QString> IconThemes::findInFolder(const QString& folder, const QString& name) {
    for (const char* extension : {".png", ".svg", ".xpm"}) {
        const QString file = folder + u'/' + name + QLatin1String(extension);
        if (QFileInfo(file).isFile())
            return file;
    }
    return std::nullopt;
}

} // namespace zenlot
