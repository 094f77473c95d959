// A PropertyListReader for tests: files that the test names before it reads them. It counts.
#pragma once

#include "platform/property_list.h"

#include <QHash>

#include <atomic>

namespace zenlot {

class FakePropertyListReader final : public PropertyListReader {
  public:
    QHash<QString, QVariantMap> files; // by path
    mutable std::atomic<int> reads{0};

    std::optional<QVariantMap> dictionary(const QString& path) const override {
        ++reads;
        const auto found = files.constFind(path);
        return found == files.constEnd() ? std::nullopt : std::optional(*found);
    }
};

} // namespace zenlot
