// Inspects processes on macOS.
//
// Each question is asked for itself: a kernel that keeps the sizes of a process to itself may still
// list its descriptors.
#pragma once

#include "inventory/darwin/darwin_calls.h"
#include "inventory/process_inspector.h"

namespace zenlot {

class DarwinProcessInspector final : public ProcessInspector {
  public:
    // `calls` must outlive the inspector.
    explicit DarwinProcessInspector(const DarwinCalls& calls);

    ProcessFacts inspect(ProcessId pid) const override;
    std::uint64_t physicalMemoryBytes() const override;

  private:
    const DarwinCalls& calls_;
};

} // namespace zenlot
