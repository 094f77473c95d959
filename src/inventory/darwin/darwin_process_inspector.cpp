#include "inventory/darwin/darwin_process_inspector.h"

#include "inventory/darwin/kernel_records.h"
#include "inventory/darwin/process_queries.h"
#include "inventory/darwin/process_records.h"
#include "inventory/process_names.h"
#include "posix/load.h"

#include <array>
#include <span>

namespace zenlot {

namespace {

std::optional<TaskInfo> queryTaskInfo(const DarwinCalls& calls, ProcessId pid) {
    std::array<std::byte, sizeof(ProcTaskAllInfo)> info{};
    if (calls.proc_pidinfo(pid, kProcPidTaskAllInfo, 0, info.data(),
                           static_cast<int>(info.size())) < 1)
        return std::nullopt;
    std::optional<TaskInfo> task = decodeTaskInfo(info);
    std::array<std::byte, sizeof(MachTimebaseInfo)> timebase{};
    if (task && calls.mach_timebase_info(timebase.data()) == 0)
        task->cpuTime = decodeCpuTime(info, timebase);
    return task;
}

} // namespace

DarwinProcessInspector::DarwinProcessInspector(const DarwinCalls& calls) : calls_(calls) {}

ProcessFacts DarwinProcessInspector::inspect(ProcessId pid) const {
    ProcessFacts facts;
    facts.task = queryTaskInfo(calls_, pid);
    if (facts.task && facts.task->parentPid != 0)
        facts.parentName = processNameOf(queryExecutablePath(calls_, facts.task->parentPid));
    const std::vector<std::byte> descriptors = queryDescriptors(calls_, pid);
    facts.descriptorCount = static_cast<std::int64_t>(descriptors.size() / sizeof(ProcFdInfo));
    facts.tcpSockets = queryTcpSockets(calls_, pid, descriptors);
    return facts;
}

std::uint64_t DarwinProcessInspector::physicalMemoryBytes() const {
    std::array<std::byte, sizeof(std::uint64_t)> size{};
    std::size_t length = size.size();
    return calls_.sysctlbyname(kMemorySizeName, size.data(), &length) == 0 && length == size.size()
               ? loadAt<std::uint64_t>(size)
               : 0;
}

} // namespace zenlot
