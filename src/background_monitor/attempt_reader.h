// Reads an Attempt out of /proc, if the process is one of the user's that may become a server.
//
// Of a command line and an environment only what WantedPort and Invocation need is looked at, and
// nothing of it leaves the program.
#pragma once

#include "background_monitor/attempt.h"
#include "background_monitor/runtime_table.h"
#include "inventory/linux/proc_files.h"

#include <optional>
#include <string>

namespace zenlot {

class AttemptReader {
  public:
    // `table` must outlive the reader. Only processes of `user` in this network namespace count.
    AttemptReader(const RuntimeTable& table, std::string home, UserId user = currentUserId(),
                  const std::string& procRoot = "/proc");

    // None for every other process, and for one that is gone.
    std::optional<Attempt> read(ProcessId pid) const;

  private:
    std::string link(ProcessId pid, const char* name) const;
    void readFamily(Attempt& attempt) const;

    const RuntimeTable& table_;
    std::string home_;
    UserId user_;
    std::string procRoot_;
    ProcFiles procFiles_;
    std::string ownNetwork_;
};

// When a process with this start was started.
BootTime bootTimeOfTicks(std::int64_t startTicks);

// Now.
BootTime bootTimeNow();

} // namespace zenlot
