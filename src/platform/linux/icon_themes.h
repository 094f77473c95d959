// Finds the picture of an icon by the rules for icon themes.
//
// A theme is looked through before those that it inherits from; then comes "hicolor", in which
// applications put their own icons, then the full themes that most systems have, since hicolor
// lacks the generic icons, then pictures outside of themes. Within a theme the folder counts whose
// size fits best, where one that must be enlarged fits less than one that must be shrunk.
//
// Any thread may ask. Answers are kept until a folder of icons gains or loses an entry.
#pragma once

#include "platform/linux/folder_stamps.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <mutex>
#include <optional>
#include <vector>

namespace zenlot {

class IconThemes {
  public:
    // Themes are folders in the icon directories, the more important first; pictures outside of
    // themes lie there too, and in the picture directories.
    IconThemes(QStringList iconDirectories, const QStringList& pictureDirectories);

    // The absolute path, or empty. Names hold no slash.
    QString pictureFile(const QString& name, const QString& theme, int sizeInPixels);

  private:
    struct Folder {
        QStringList places; // absolute, in each icon directory that has it
        int smallest{0};
        int largest{0};
    };
    struct Theme {
        QStringList parents;
        std::vector<Folder> folders;
    };

    const Theme& theme(const QString& name);
    QStringList themesFrom(const QString& first);
    QString find(const QString& name, const QString& firstTheme, int sizeInPixels);
    static std::optional<QString> findInFolder(const QString& folder, const QString& name);

    QStringList iconDirectories_;
    QStringList pictureDirectories_;
    std::mutex mutex_;                   // guards what follows
    std::optional<FolderStamps> stamps_; // of what was read; none before the first question
    QHash<QString, Theme> themes_;
    QHash<QString, QString> answers_; // by name, theme and size
};

} // namespace zenlot
