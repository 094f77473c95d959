// Which process is meant: a process id is given to another process soon after its own has ended,
// but never together with the same start.
#pragma once

#include "inventory/process_tables.h"

#include <cstdint>
#include <optional>
#include <utility>

namespace zenlot {

// The id as the system has it; 0, which is nobody's, for a number that no process can have.
constexpr ProcessId processIdOf(std::int64_t pid) {
    return pid > 0 && std::in_range<ProcessId>(pid) ? static_cast<ProcessId>(pid) : 0;
}

struct ProcessIdentity {
    std::int64_t pid{0}; // 0 when unknown

    // When the process started, in the system's own units since the start of the machine. Says
    // nothing by itself; it tells processes apart that had one id, and the earlier from the later.
    // None when nobody has read it.
    std::optional<std::int64_t> startTime{};

    friend bool operator==(const ProcessIdentity&, const ProcessIdentity&) = default;
};

} // namespace zenlot
