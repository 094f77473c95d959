// Keeps the programs of one user apart while they change a file in a folder.
//
// The lock lies on the folder itself: it leaves no file behind and ends with the process that
// holds it. It is advice, taken only by those who ask for it, and not insisted on: where the file
// system has no locks, or the holder does not let go within two seconds, work goes on without it.
#pragma once

#include <QString>

namespace zenlot {

class DirectoryLock {
  public:
    explicit DirectoryLock(const QString& directory);
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock&) = delete;
    DirectoryLock& operator=(const DirectoryLock&) = delete;

  private:
    int descriptor_;
};

} // namespace zenlot
