// The preferences as one JSON object in a file, which the user and other programs may edit too.
//
// Every reading reads the file and every change rewrites it atomically, so an edit from outside
// counts at once and survives, as do keys that are unknown here. A value that the file already
// holds is not written again. A file that is no JSON object (cut short, not UTF-8, nested deeper
// than 128 levels, above 8 MiB) reads as empty; the first change moves it to the same name with
// ".damaged" behind it and starts a new one. Where that is impossible, and where something other
// than a readable regular file stands at the path, nothing is written.
//
//     JsonUserDefaults defaults(home.configHome + "/dev.quorvane.zenlot/defaults.json");
#pragma once

#include "platform/user_defaults.h"

namespace zenlot {

class JsonUserDefaults final : public UserDefaults {
  public:
    explicit JsonUserDefaults(QString path);

    std::optional<QVariant> object(const QString& key) const override;
    void remove(const QString& key) override;

  private:
    void store(const QString& key, const QVariant& value) override;

    QString path_;
};

} // namespace zenlot
