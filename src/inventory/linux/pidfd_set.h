// Tells at once when one of some processes ends, however it ends and whoever they belong to: a
// pidfd for each of them, all of them behind one descriptor that can be waited on.
//
//     PidfdSet owners;
//     owners.assign({812, 4711});
//     // whenever owners.descriptor() is readable:
//     for (ProcessId pid : owners.takeEnded()) ...
#pragma once

#include "inventory/process_tables.h"
#include "posix/file_descriptor.h"

#include <cstddef>
#include <map>
#include <vector>

namespace zenlot {

class PidfdSet {
  public:
    // Of more processes those with the smallest ids are watched.
    static constexpr std::size_t kMost = 256;

    PidfdSet();

    // To wait on for reading; -1 where the kernel has no pidfds to wait for.
    int descriptor() const { return epoll_.get(); }

    // Watches these processes and no others from now on. One that is gone already is not told of.
    void assign(std::vector<ProcessId> pids);

    // Those that have ended, each once.
    std::vector<ProcessId> takeEnded();

  private:
    FileDescriptor epoll_;
    std::map<ProcessId, FileDescriptor> watched_;
};

} // namespace zenlot
