// The version of a release: numbers, and what may follow them.
//
//     1.10  1.10.0  v2.0  2.0-rc.1  2.0rc1  2.0~beta2  2.0+build.7
//
// Numbers are compared as numbers, and missing ones are zero: 1.9 < 1.10 = 1.10.0. Anything after
// the numbers makes a pre-release, which comes before the release itself: 2.0-alpha < 2.0-rc2 <
// 2.0-rc10 < 2.0. What follows a plus sign tells builds of one release apart and counts for
// nothing.
#pragma once

#include <QString>
#include <QStringList>
#include <QVersionNumber>

#include <optional>

namespace zenlot {

class ReleaseVersion final {
  public:
    // Before every other version.
    ReleaseVersion() = default;

    // None for what is no version, has a number above 999,999,999, or is longer than any version.
    static std::optional<ReleaseVersion> fromText(const QString& text);

    // Negative when `one` comes before `other`, positive when after, 0 when they are the same.
    static int compare(const ReleaseVersion& one, const ReleaseVersion& other);

    // As it was written, without a "v" in front. ASCII letters, digits and ".-~+" only.
    QString text() const { return text_; }

  private:
    QString text_;
    QVersionNumber number_;
    QStringList preRelease_; // in runs of letters or digits
};

} // namespace zenlot
