// A UserDefaults for tests, kept in memory. It records every change.
#pragma once

#include "platform/user_defaults.h"

#include <vector>

namespace zenlot {

class FakeUserDefaults final : public UserDefaults {
  public:
    struct Write {
        QString key;
        std::optional<QVariant> value; // nothing: the key was removed

        friend bool operator==(const Write&, const Write&) = default;
    };

    QVariantMap values;
    std::vector<Write> writes;

    std::optional<QVariant> object(const QString& key) const override {
        const auto found = values.constFind(key);
        return found == values.constEnd() ? std::nullopt : std::optional<QVariant>(*found);
    }

    void remove(const QString& key) override {
        writes.push_back({key, std::nullopt});
        values.remove(key);
    }

  private:
    void store(const QString& key, const QVariant& value) override {
        writes.push_back({key, value});
        values.insert(key, value);
    }
};

} // namespace zenlot
