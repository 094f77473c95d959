// Keeps a second background monitor of the same user away. The lock ends with the process that
// holds it, however it ends; the empty file stays.
#pragma once

#include "inventory/linux/file_descriptor.h"

#include <string>

namespace zenlot {

class InstanceLock {
  public:
    explicit InstanceLock(const std::string& path);

    // False while another process holds the lock. A file that can't be made locks nobody out.
    bool isOurs() const { return isOurs_; }

  private:
    FileDescriptor file_;
    bool isOurs_;
};

} // namespace zenlot
