// Ends processes on macOS.
//
// The system has no handle that holds a process, so between the question who owns it and the signal
// its id could in principle pass to another one; the pin keeps that time as short as it can be.
// Start and user are those of the moment of pinning.
#pragma once

#include "inventory/darwin/darwin_calls.h"
#include "inventory/force_quit.h"

#include <memory>

namespace zenlot {

class DarwinProcessPinner final : public ProcessPinner {
  public:
    // `calls` must outlive the pinner and what it has pinned.
    explicit DarwinProcessPinner(const DarwinCalls& calls);

    // Null also for a process that the current user may not inspect.
    std::unique_ptr<PinnedProcess> pin(ProcessId pid) const override;

  private:
    const DarwinCalls& calls_;
};

} // namespace zenlot
