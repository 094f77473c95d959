// A PropertyListReader for tests: files that the test names before it reads them. It counts.
#pragma once

#include "platform/property_list.h"

#include <QHash>

#include <atomic>

namespace zenlot {

class FakePropertyListReader final : public PropertyListReader {
  public:
    QHash<QString, PropertyTexts> files; // by path
    mutable std::atomic<int> reads{0};

    PropertyTexts texts(const QString& path, const QStringList& keys) const override {
        ++reads;
        PropertyTexts found = files.value(path);
        found.removeIf([&keys](const auto& entry) { return !keys.contains(entry.key()); });
        return found;
    }
};

} // namespace zenlot
