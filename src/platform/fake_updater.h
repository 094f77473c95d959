// An Updater for tests. It counts how often it is asked.
#pragma once

#include "platform/updater.h"

namespace zenlot {

class FakeUpdater final : public Updater {
  public:
    int checks{0};

    void checkForUpdates() override { ++checks; }
};

} // namespace zenlot
