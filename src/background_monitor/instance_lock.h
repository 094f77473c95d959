// Keeps a second background monitor of the same user away, and tells readers of the container that
// somebody minds its list. The lock ends with the process that holds it, however it ends; the empty
// file stays.
//
// The file is locked in both ways that there are: readers can ask about the one without taking it,
// and earlier releases know the other.
#pragma once

#include "posix/file_descriptor.h"

#include <cstdint>
#include <string>

namespace zenlot {

class InstanceLock {
  public:
    // What to do while another process holds the lock: give up, or wait until it ends.
    enum class Patience : std::uint8_t { none, endless };

    explicit InstanceLock(std::string path, Patience patience = Patience::none);

    // False while another process holds the lock. A file that can't be made locks nobody out.
    bool isOurs() const { return isOurs_; }

    // False when the file that is locked does not lie at its path any more, so that others could
    // lock another one.
    bool isInPlace() const;

  private:
    std::string path_;
    FileDescriptor file_;
    bool isOurs_;
};

} // namespace zenlot
