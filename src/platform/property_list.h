// Reads texts out of property lists, the files in which application bundles describe themselves.
//
// The files belong to whoever installed the bundle: damaged, hostile and endless ones read as
// empty. Any thread may read, several at once. Each call reads the disk: read on a worker thread.
//
//     const PropertyTexts info = reader.texts(bundlePath + "/Contents/Info.plist", {kIdentifier});
//     const QString identifier = info.value(kIdentifier);
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace zenlot {

using PropertyTexts = QHash<QString, QString>; // by key

class PropertyListReader {
  public:
    PropertyListReader() = default;
    PropertyListReader(const PropertyListReader&) = delete;
    PropertyListReader& operator=(const PropertyListReader&) = delete;
    virtual ~PropertyListReader() = default;

    // Those of the `keys` whose values in the dictionary that the file holds are texts.
    virtual PropertyTexts texts(const QString& path, const QStringList& keys) const = 0;
};

} // namespace zenlot
