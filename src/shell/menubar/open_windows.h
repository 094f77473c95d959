// Which of the program's open windows come to the front. Main thread only.
#pragma once

#include "platform/application_windows.h"

namespace zenlot {

class OpenWindows final {
  public:
    // Must outlive the object.
    explicit OpenWindows(ApplicationWindows& windows) : windows_(windows) {}

    // Brings the first open window that can have the keyboard forward, or else the first that is
    // open. False when none is.
    bool focusExisting();

    // All windows, among which the one that has the keyboard stays on top.
    void activate();

  private:
    ApplicationWindows& windows_;
};

} // namespace zenlot
