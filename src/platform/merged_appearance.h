// What two places tell of how the user wants programs to look. The first is believed where both
// tell of colours; of the text's sizes the larger counts, less what the toolkit sees to itself, and
// one wish for less motion or more contrast is enough.
//
//     MergedAppearance appearance(portal, settingsOfDisplay);
//
// Main thread only.
#pragma once

#include "platform/appearance.h"

namespace zenlot {

class MergedAppearance final : public Appearance {
    Q_OBJECT

  public:
    // Both must outlive the object.
    MergedAppearance(const Appearance& first, const Appearance& second, QObject* parent = nullptr);

    const AppearanceWishes& wishes() const override { return wishes_; }

  private:
    void merge();

    const Appearance& first_;
    const Appearance& second_;
    AppearanceWishes wishes_;
};

} // namespace zenlot
