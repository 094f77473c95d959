// Property lists in XML and in the binary format, read by libplist.
//
// The library builds whatever a file describes, however deep and however often the file refers to
// the same part. So a file is weighed before: it must be a regular file of at most 4 MiB, what it
// describes must not be larger than a few times that, and neither nest deeper than is sensible.
#pragma once

#include "platform/property_list.h"

#include <QByteArray>

namespace zenlot {

class LibplistPropertyListReader final : public PropertyListReader {
  public:
    std::optional<QVariantMap> dictionary(const QString& path) const override;
};

// The dictionary that the content of a file describes, or none.
std::optional<QVariantMap> propertyListDictionary(const QByteArray& content);

} // namespace zenlot
