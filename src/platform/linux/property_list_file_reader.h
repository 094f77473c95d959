// Property lists in XML and in the binary format, of at most 4 MiB.
//
// Of a file nothing is built but the texts that were asked for, so what it costs grows with its
// size alone, however deep it nests and however often its parts refer to each other.
#pragma once

#include "platform/property_list.h"

#include <QByteArray>

namespace zenlot {

class PropertyListFileReader final : public PropertyListReader {
  public:
    PropertyTexts texts(const QString& path, const QStringList& keys) const override;
};

// The same of the content of a file.
PropertyTexts propertyListTexts(const QByteArray& content, const QStringList& keys);

} // namespace zenlot
