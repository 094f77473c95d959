// A ProcessInspector for tests, made of plain values. A pid without an entry is a process that is
// gone.
#pragma once

#include "inventory/process_inspector.h"

#include <map>

namespace zenlot {

class FakeProcessInspector final : public ProcessInspector {
  public:
    std::map<ProcessId, ProcessFacts> processes;
    std::uint64_t memoryBytes{0};

    ProcessFacts inspect(ProcessId pid) const override {
        const auto found = processes.find(pid);
        return found == processes.end() ? ProcessFacts() : found->second;
    }

    std::uint64_t physicalMemoryBytes() const override { return memoryBytes; }
};

} // namespace zenlot
