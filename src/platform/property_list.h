// Reads property lists, the files in which application bundles describe themselves.
//
// The files belong to whoever installed the bundle: damaged, hostile and endless ones read as none.
// Any thread may read, several at once. Each call reads the disk: read on a worker thread.
//
//     const auto info = reader.dictionary(bundlePath + "/Contents/Info.plist");
//     const auto identifier = textIn(info.value_or(QVariantMap()), "CFBundleIdentifier");
#pragma once

#include <QString>
#include <QVariantMap>

#include <optional>

namespace zenlot {

class PropertyListReader {
  public:
    PropertyListReader() = default;
    PropertyListReader(const PropertyListReader&) = delete;
    PropertyListReader& operator=(const PropertyListReader&) = delete;
    virtual ~PropertyListReader() = default;

    // The dictionary that the file holds, or none. Its values are QString, bool, qulonglong,
    // double, QByteArray, QDateTime, QVariantList and QVariantMap; a value of another kind is
    // an invalid QVariant.
    virtual std::optional<QVariantMap> dictionary(const QString& path) const = 0;
};

// The value when it is a text; none when it is missing or of another kind.
inline std::optional<QString> textIn(const QVariantMap& dictionary, const QString& key) {
    const QVariant value = dictionary.value(key);
    return value.typeId() == QMetaType::QString ? std::optional(value.toString()) : std::nullopt;
}

} // namespace zenlot
