// Wishes that the owner states.
#pragma once

#include "platform/appearance.h"

namespace zenlot {

class FakeAppearance final : public Appearance {
  public:
    const AppearanceWishes& wishes() const override { return current; }
    void become(const AppearanceWishes& wishes) {
        current = wishes;
        Q_EMIT changed();
    }

    AppearanceWishes current;
};

} // namespace zenlot
