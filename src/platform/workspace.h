// The pictures that the desktop has for files and applications.
//
// An icon is a text: a name in the icon theme ("application-x-executable") or the absolute path of
// a picture. It becomes visible in two steps, so that the choice of an icon needs no theme:
//
//     const QString icon = workspace.iconForFile("/Applications/Sample.app");
//     const QString file = workspace.pictureOfIcon(icon, QIcon::themeName(), 44);
//
// Any thread may ask, several at once. Both steps may read the disk: ask on a worker thread, never
// between frames.
#pragma once

#include <QString>

namespace zenlot {

class Workspace {
  public:
    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    // The icon of a file, a folder or an application bundle; a generic one for what is missing or
    // of an unknown kind. Never empty.
    virtual QString iconForFile(const QString& path) const = 0;

    // The absolute path of the file whose picture suits a square of that many device pixels best:
    // from the named theme, from those it builds on, or from no theme. Empty when there is none.
    virtual QString pictureOfIcon(const QString& icon, const QString& theme,
                                  int sizeInPixels) const = 0;
};

} // namespace zenlot
