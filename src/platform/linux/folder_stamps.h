// Tells whether what was read from some folders still holds: whether any of them has gained, lost
// or renamed an entry since. What is written into an existing file stays unnoticed.
//
//     stamps.add(folder); // before reading it
//     ...
//     if (!stamps.areCurrent())
//         readAgain();
#pragma once

#include <QString>

#include <sys/types.h>

#include <ctime>
#include <vector>

namespace zenlot {

class FolderStamps {
  public:
    // The folder may be missing; its coming is a change too.
    void add(const QString& folder);

    bool areCurrent() const;

  private:
    struct Stamp {
        QString folder;
        dev_t device{0};
        ino_t inode{0};
        timespec modified{};
    };

    static Stamp stampOf(const QString& folder);

    std::vector<Stamp> stamps_;
    // A folder changed in the very tick of the clock in which it was stamped: the next change may
    // bear the same time.
    bool isAmbiguous_{false};
};

} // namespace zenlot
