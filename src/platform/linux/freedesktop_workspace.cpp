#include "platform/linux/freedesktop_workspace.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr char kPngSignature[] = "\x89PNG\r\n\x1a\n";
constexpr qsizetype kPngSignatureLength = 8;

QStringList below(const QStringList& directories, const QString& name) {
    QStringList folders;
    for (const QString& directory : directories)
        folders.append(directory + name);
    return folders;
}

bool isPngFile(const QString& path) {
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) &&
           file.read(kPngSignatureLength) == QByteArray(kPngSignature, kPngSignatureLength);
}

} // namespace

FreedesktopWorkspace::FreedesktopWorkspace(const QString& home, const QStringList& dataDirectories,
                                           const PropertyListReader& propertyLists)
    : propertyLists_(propertyLists),
      themes_(QStringList(home + u"/.icons"_s) + below(dataDirectories, u"/icons"_s),
              below(dataDirectories, u"/pixmaps"_s)) {}

QString FreedesktopWorkspace::iconForFile(const QString& path) const {
    const QFileInfo info(QDir::cleanPath(path));
    if (info.suffix() == QLatin1String("app") && (info.isDir() || !info.exists()))
        return pictureOfBundle(info.filePath()).value_or(u"application-x-executable"_s);
    if (info.isDir())
        return u"folder"_s;
    const QMimeType type =
        mimeTypes_.mimeTypeForFile(info.fileName(), QMimeDatabase::MatchExtension);
    // A program has no extension, and is told from other files by being executable.
    if (type.isDefault())
        return info.isFile() && info.isExecutable() ? u"application-x-executable"_s
                                                    : u"text-x-generic"_s;
    return type.genericIconName();
}

std::optional<QString> FreedesktopWorkspace::pictureOfBundle(const QString& path) const {
    const QString key = u"CFBundleIconFile"_s;
    const QString name = propertyLists_.texts(path + u"/Contents/Info.plist"_s, {key}).value(key);
    // The name comes from the bundle and must not lead out of it.
    if (name.isEmpty() || name.contains(u'/') || name.contains(QChar::Null))
        return std::nullopt;
    const QString file = path + u"/Contents/Resources/"_s + name;
    for (const QString& candidate : {file, file + u".png"_s}) {
        if (isPngFile(candidate))
            return candidate;
    }
    return std::nullopt;
}

QString FreedesktopWorkspace::pictureOfIcon(const QString& icon, const QString& theme,
                                            int sizeInPixels) const {
    if (QDir::isAbsolutePath(icon))
        return QFileInfo(icon).isFile() ? icon : QString();
    // Old entries name a file where a name in the theme is meant.
    QString name = icon;
    for (const QLatin1String extension :
         {QLatin1String(".png"), QLatin1String(".svg"), QLatin1String(".xpm")}) {
        if (name.endsWith(extension)) {
            name.chop(extension.size());
            break;
        }
    }
    return themes_.pictureFile(name, theme, sizeInPixels);
}

} // namespace zenlot
