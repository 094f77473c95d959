#include "inventory/linux/linux_process_inspector.h"

#include "inventory/linux/proc_stat.h"
#include "inventory/linux/socket_index.h"
#include "inventory/linux/tcp_socket_table.h"
#include "inventory/process_names.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

// The kernel shows its ticks to programs at a rate of their own, which need not be that of its
// clock.
std::int64_t ticksPerSecond() {
    return std::max(1L, ::sysconf(_SC_CLK_TCK));
}

std::uint64_t pageBytes() {
    return static_cast<std::uint64_t>(std::max(1L, ::sysconf(_SC_PAGESIZE)));
}

} // namespace

LinuxProcessInspector::LinuxProcessInspector(const std::string& procRoot,
                                             std::unique_ptr<NetlinkTransport> transport)
    : procFiles_(procRoot), transport_(std::move(transport)) {}

ProcessFacts LinuxProcessInspector::inspect(ProcessId pid) const {
    ProcessFacts facts;
    facts.task = taskInfo(pid);
    if (facts.task && facts.task->parentPid != 0)
        facts.parentName = nameOf(facts.task->parentPid);

    // The descriptors come first, since a process without sockets needs no look at the kernel's.
    std::vector<std::uint64_t> inodes;
    facts.descriptorCount = procFiles_.forEachSocketInode(
        pid, [&inodes](std::uint64_t inode) { inodes.push_back(inode); });
    if (inodes.empty())
        return facts;
    const SocketIndex index(
        readTcpSockets(procFiles_, *transport_, SocketScope::held, std::nullopt).sockets);
    for (const std::uint64_t inode : inodes) {
        if (const TcpSocket* socket = index.find(inode))
            facts.tcpSockets.push_back(*socket);
    }
    return facts;
}

// The program of another user's process can't be seen, but the name that the process has.
std::string LinuxProcessInspector::nameOf(ProcessId pid) const {
    const std::string path = procFiles_.executablePath(pid);
    return sanitizedUtf8(path.empty() ? procFiles_.commandName(pid) : processNameOf(path));
}

std::uint64_t LinuxProcessInspector::physicalMemoryBytes() const {
    const auto text = procFiles_.read("meminfo");
    return text ? decodeTotalMemory(*text).value_or(0) * 1024 : 0;
}

std::optional<TaskInfo> LinuxProcessInspector::taskInfo(ProcessId pid) const {
    const std::string folder = std::to_string(pid);
    const auto stat = procFiles_.stat(pid);
    if (!stat)
        return std::nullopt;
    const auto memoryText = procFiles_.read(folder + "/statm");
    const auto pages =
        memoryText ? decodeStatm(*memoryText).value_or(MemoryPages()) : MemoryPages();
    const auto machineText = procFiles_.read("stat");
    const auto bootTime = machineText ? decodeBootTime(*machineText) : std::nullopt;

    TaskInfo task;
    task.parentPid = stat->parentPid;
    task.state = stat->state;
    if (bootTime)
        task.startTime = std::chrono::seconds(*bootTime + stat->startTicks / ticksPerSecond());
    task.virtualBytes = pages.virtualPages * pageBytes();
    task.residentBytes = pages.residentPages * pageBytes();
    task.cpuTime = std::chrono::milliseconds(stat->cpuTicks * 1000 / ticksPerSecond());
    return task;
}

} // namespace zenlot
