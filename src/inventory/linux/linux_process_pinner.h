// Holds a process through a pidfd, so that a signal reaches the process that was looked at and
// never one that got its id since. Where pidfds are missing or forbidden there is only kill().
//
// What is asked of the process is read from /proc by number. Should the number have passed to
// another process in between, then the held one has ended, and the signal to it fails.
#pragma once

#include "inventory/force_quit.h"
#include "inventory/linux/linux_process_tables.h"
#include "inventory/linux/proc_files.h"

#include <string>

namespace zenlot {

class LinuxProcessPinner final : public ProcessPinner {
  public:
    explicit LinuxProcessPinner(const std::string& procRoot = "/proc");

    std::unique_ptr<PinnedProcess> pin(ProcessId pid) const override;

  private:
    ProcFiles procFiles_;
    LinuxProcessTables tables_;
};

} // namespace zenlot
