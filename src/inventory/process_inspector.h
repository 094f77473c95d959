// What can be learned of one process beyond its ports: its parent, sizes, state and age, and the
// TCP sockets that it holds.
//
// Everything is read at the moment of the question and nothing is kept. Nothing fails loudly: what
// the kernel does not tell (of a process that is gone, or of another user's) stays empty or 0. The
// operations may be called from several threads at once.
//
//     const ProcessFacts facts = inspector.inspect(4312);
//     if (facts.task) ... facts.task->residentBytes ...
#pragma once

#include "inventory/process_tables.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zenlot {

enum class ProcessState : std::uint8_t {
    unknown,
    beingCreated,
    runnable,
    sleeping,
    stopped,
    zombie,
};

struct TaskInfo {
    ProcessId parentPid{0}; // 0 for none
    ProcessState state{ProcessState::unknown};
    std::chrono::seconds startTime{0}; // since the beginning of 1970; 0 when not known
    std::uint64_t virtualBytes{0};
    std::uint64_t residentBytes{0};
    std::optional<std::chrono::milliseconds> cpuTime; // in user code and in the kernel together

    friend bool operator==(const TaskInfo&, const TaskInfo&) = default;
};

struct ProcessFacts {
    std::optional<TaskInfo> task;
    std::string parentName;            // as UTF-8 with U+FFFD for what is not; empty when unknown
    std::int64_t descriptorCount{0};   // of every kind
    std::vector<TcpSocket> tcpSockets; // of every state, in the order of the descriptors

    friend bool operator==(const ProcessFacts&, const ProcessFacts&) = default;
};

class ProcessInspector {
  public:
    ProcessInspector() = default;
    ProcessInspector(const ProcessInspector&) = delete;
    ProcessInspector& operator=(const ProcessInspector&) = delete;
    virtual ~ProcessInspector() = default;

    virtual ProcessFacts inspect(ProcessId pid) const = 0;

    // The memory of the machine; 0 when it is not known.
    virtual std::uint64_t physicalMemoryBytes() const = 0;
};

} // namespace zenlot
