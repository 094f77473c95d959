// A BackgroundItemsSettings for tests, which counts how often it is opened.
#pragma once

#include "platform/background_items_settings.h"

namespace zenlot {

class FakeBackgroundItemsSettings final : public BackgroundItemsSettings {
  public:
    int openings{0};

    void openSystemSettingsLoginItems() override { ++openings; }
};

} // namespace zenlot
