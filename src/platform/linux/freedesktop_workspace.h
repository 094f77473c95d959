// The pictures of files by the rules that the desktops share.
//
// A folder whose name ends in ".app" is an application bundle: its icon is the picture that its
// Contents/Info.plist names as CFBundleIconFile, when that is a PNG file in Contents/Resources, and
// otherwise "application-x-executable". Other folders are "folder"; files have the generic icon of
// their kind, which is told from the name alone.
//
// Any thread may ask. Answers about themes are kept as IconThemes says; a bundle is read each time.
#pragma once

#include "platform/linux/icon_themes.h"
#include "platform/property_list.h"
#include "platform/workspace.h"

#include <QMimeDatabase>
#include <QStringList>

#include <optional>

namespace zenlot {

class FreedesktopWorkspace final : public Workspace {
  public:
    // Icons lie in ".icons" below the home and in "icons" and "pixmaps" below each data directory.
    FreedesktopWorkspace(const QString& home, const QStringList& dataDirectories,
                         const PropertyListReader& propertyLists);

    QString iconForFile(const QString& path) const override;
    QString pictureOfIcon(const QString& icon, const QString& theme,
                          int sizeInPixels) const override;

  private:
    std::optional<QString> pictureOfBundle(const QString& path) const;

    const PropertyListReader& propertyLists_;
    mutable IconThemes themes_;
    QMimeDatabase mimeTypes_;
};

} // namespace zenlot
