#include "inventory/darwin/process_owner_query.h"

#include "inventory/darwin/kernel_records.h"

#include <array>

namespace zenlot {

std::optional<ProcessOwner> queryProcessOwner(const DarwinCalls& calls, ProcessId pid) {
    std::array<std::byte, sizeof(ProcBsdInfo)> info{};
    const int written =
        calls.proc_pidinfo(pid, kProcPidTbsdInfo, 0, info.data(), static_cast<int>(info.size()));
    if (written < 1)
        return std::nullopt;
    return decodeProcessOwner(info);
}

} // namespace zenlot
