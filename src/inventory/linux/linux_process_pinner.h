// Holds a process through a pidfd, so that a signal reaches the process whose user was checked and
// never one that got its id since. A kernel without pidfds leaves only kill().
#pragma once

#include "inventory/force_quit.h"
#include "inventory/linux/proc_files.h"

#include <string>

namespace zenlot {

class LinuxProcessPinner final : public ProcessPinner {
  public:
    explicit LinuxProcessPinner(const std::string& procRoot = "/proc");

    std::unique_ptr<PinnedProcess> pin(ProcessId pid) const override;

  private:
    ProcFiles procFiles_;
};

} // namespace zenlot
