#include "platform/merged_appearance.h"

#include <algorithm>
#include <utility>

namespace zenlot {

MergedAppearance::MergedAppearance(const Appearance& first, const Appearance& second,
                                   QObject* parent)
    : Appearance(parent), first_(first), second_(second) {
    for (const Appearance* each : {&first_, &second_})
        connect(each, &Appearance::changed, this, &MergedAppearance::merge);
    merge();
}

void MergedAppearance::merge() {
    AppearanceWishes wishes = first_.wishes();
    const AppearanceWishes& others = second_.wishes();
    if (wishes.colorScheme == ColorScheme::noPreference)
        wishes.colorScheme = others.colorScheme;
    if (!wishes.accent)
        wishes.accent = others.accent;
    wishes.isContrastHigh = wishes.isContrastHigh || others.isContrastHigh;
    wishes.toolkitTextScale = std::max(wishes.toolkitTextScale, others.toolkitTextScale);
    wishes.textScale =
        std::max({wishes.textScale / wishes.toolkitTextScale, others.textScale, 1.0});
    wishes.isMotionReduced = wishes.isMotionReduced || others.isMotionReduced;
    if (std::exchange(wishes_, wishes) != wishes)
        Q_EMIT changed();
}

} // namespace zenlot
