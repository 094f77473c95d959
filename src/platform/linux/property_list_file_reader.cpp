#include "platform/linux/property_list_file_reader.h"

#include "platform/linux/binary_property_list.h"
#include "platform/linux/user_file.h"

#include <QXmlStreamReader>

namespace zenlot {
namespace {

constexpr qint64 kMaximumListBytes = qint64{4} * 1024 * 1024;

// Reads to the end, since a list that is cut off says nothing.
PropertyTexts textsOfXml(const QByteArray& content, const QStringList& keys) {
    QXmlStreamReader xml(content);
    if (!xml.readNextStartElement() || xml.name() != QLatin1String("plist") ||
        !xml.readNextStartElement() || xml.name() != QLatin1String("dict"))
        return {};
    PropertyTexts texts;
    QString key;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("key"))
            key = xml.readElementText();
        else if (xml.name() == QLatin1String("string") && keys.contains(key))
            texts.insert(key, xml.readElementText());
        else
            xml.skipCurrentElement();
    }
    while (!xml.atEnd())
        xml.readNext();
    return xml.hasError() ? PropertyTexts() : texts;
}

} // namespace

PropertyTexts propertyListTexts(const QByteArray& content, const QStringList& keys) {
    if (content.size() > kMaximumListBytes)
        return {};
    return content.startsWith("bplist") ? textsOfBinaryPropertyList(content, keys)
                                        : textsOfXml(content, keys);
}

PropertyTexts PropertyListFileReader::texts(const QString& path, const QStringList& keys) const {
    return propertyListTexts(readUserFile(path, kMaximumListBytes).content, keys);
}

} // namespace zenlot
