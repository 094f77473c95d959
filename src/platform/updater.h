// Tells the user whether there is a newer release of this program. How it asks and how it shows
// the answer is its own affair; it asks only when it is told to, and never installs anything.
//
// Main thread only.
#pragma once

namespace zenlot {

class Updater {
  public:
    Updater() = default;
    Updater(const Updater&) = delete;
    Updater& operator=(const Updater&) = delete;
    virtual ~Updater() = default;

    // The user asked for it: whatever comes of it is shown to them, also that nothing is newer. A
    // check that is under way is brought to their eyes again instead of a second one.
    virtual void checkForUpdates() = 0;
};

} // namespace zenlot
