// Asks the kernel for the users of a process.
#pragma once

#include "inventory/darwin/darwin_calls.h"
#include "inventory/darwin/process_records.h"

#include <optional>

namespace zenlot {

// None when there is no such process or the current user may not inspect it.
std::optional<ProcessOwner> queryProcessOwner(const DarwinCalls& calls, ProcessId pid);

} // namespace zenlot
