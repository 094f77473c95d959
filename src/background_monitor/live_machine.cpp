#include "background_monitor/live_machine.h"

#include "background_monitor/attempt_reader.h"
#include "background_monitor/source_reader.h"
#include "inventory/linux/control_group.h"
#include "inventory/linux/listening_sockets.h"
#include "inventory/process_names.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace zenlot {
namespace {

constexpr std::size_t kLargestTree = 256;
constexpr int kMostAncestorsOfHolder = 32;
constexpr std::string_view kServiceEnding = ".service";

} // namespace

LiveMachine::LiveMachine(OwnerHint ownerHint) : ownerHint_(std::move(ownerHint)) {}

std::vector<ListeningSocket> LiveMachine::listeningSockets() const {
    return readListeningSockets(procFiles_, transport_);
}

bool LiveMachine::isRunning(const Attempt& attempt) const {
    const auto stat = procFiles_.stat(attempt.pid);
    return stat && stat->state != ProcessState::zombie &&
           bootTimeOfTicks(stat->startTicks) == attempt.processStartedAt;
}

std::vector<std::uint64_t> LiveMachine::socketsOfTree(ProcessId pid) const {
    std::vector<std::uint64_t> inodes;
    for (const ProcessId member : treeOf(pid)) {
        procFiles_.forEachSocketInode(member,
                                      [&inodes](std::uint64_t inode) { inodes.push_back(inode); });
    }
    return inodes;
}

std::optional<PortHolder> LiveMachine::holderOf(const ListeningSocket& socket) const {
    ProcessId holder = ownerHint_(socket.port);
    if (holder == 0 || !holds(holder, socket.inode)) {
        const std::vector<ProcessId> pids = procFiles_.pids();
        const auto found = std::ranges::find_if(
            pids, [this, &socket](ProcessId pid) { return pid > 1 && holds(pid, socket.inode); });
        if (found == pids.end())
            return socket.ownerUid == currentUserId() ? std::nullopt
                                                      : std::optional(describeUnseen(socket));
        holder = *found;
    }
    // Workers got the socket from the process that started them; to end one of them frees nothing.
    for (ProcessId parent = parentOf(holder);
         parent > 1 && holds(parent, socket.inode) && !isServiceManager(parent);
         parent = parentOf(holder))
        holder = parent;
    std::optional<PortHolder> described = describe(holder);
    // The manager of the user's services opens sockets for them. Nobody is offered to end it, which
    // would end the session with everything in it.
    if (described && isServiceManager(holder)) {
        described->pid = 0;
        described->ancestors.clear();
    }
    return described;
}

// Another user's processes may not be looked into. Of a service it is known what it is called, and
// of its processes what everybody may know.
PortHolder LiveMachine::describeUnseen(const ListeningSocket& socket) const {
    PortHolder holder;
    const auto group = findControlGroup(socket.controlGroup);
    if (!group)
        return holder;
    std::set<std::string> names;
    for (const ProcessId pid : group->processes) {
        const std::string name =
            procFiles_.read(std::to_string(pid) + "/comm").value_or(std::string());
        names.insert(name.substr(0, name.find('\n')));
    }
    if (names.size() == 1) {
        holder.pid = std::ranges::min(group->processes);
        holder.processName = sanitizedUtf8(*names.begin());
    } else if (group->name.ends_with(kServiceEnding)) {
        holder.processName =
            sanitizedUtf8(group->name.substr(0, group->name.size() - kServiceEnding.size()));
    }
    holder.displayName = makeDisplayName({}, holder.processName);
    return holder;
}

std::vector<std::uint16_t> LiveMachine::writtenPorts(const Attempt& attempt,
                                                     std::span<const std::uint16_t> held) const {
    return portsInFilesOf(attempt, held);
}

std::vector<ProcessId> LiveMachine::treeOf(ProcessId pid) const {
    std::vector<ProcessId> tree{pid};
    for (std::size_t place = 0; place < tree.size() && tree.size() < kLargestTree; ++place) {
        const std::string tasks = "/proc/" + std::to_string(tree[place]) + "/task";
        std::error_code error;
        for (std::filesystem::directory_iterator task(tasks, error), end; !error && task != end;
             task.increment(error)) {
            const auto children = procFiles_.read(task->path().string().substr(6) + "/children");
            std::istringstream words(children.value_or(std::string()));
            for (ProcessId child = 0; tree.size() < kLargestTree && words >> child;)
                tree.push_back(child);
        }
    }
    return tree;
}

bool LiveMachine::holds(ProcessId pid, std::uint64_t inode) const {
    bool found = false;
    procFiles_.forEachSocketInode(pid,
                                  [&found, inode](std::uint64_t held) { found |= held == inode; });
    return found;
}

ProcessId LiveMachine::parentOf(ProcessId pid) const {
    const auto stat = procFiles_.stat(pid);
    return stat ? stat->parentPid : 0;
}

bool LiveMachine::isServiceManager(ProcessId pid) const {
    return processNameOf(procFiles_.executablePath(pid)) == "systemd";
}

std::optional<PortHolder> LiveMachine::describe(ProcessId pid) const {
    PortHolder holder;
    holder.pid = pid;
    const std::string path = sanitizedUtf8(procFiles_.executablePath(pid));
    holder.processName = processNameOf(path);
    holder.displayName = makeDisplayName(path, holder.processName);
    for (int distance = 0; distance <= kMostAncestorsOfHolder && pid > 1; ++distance) {
        const auto stat = procFiles_.stat(pid);
        if (!stat)
            break;
        if (pid == holder.pid)
            holder.startedAt = bootTimeOfTicks(stat->startTicks);
        else
            holder.ancestors.push_back(pid);
        pid = stat->parentPid;
    }
    // A process that ended meanwhile holds nothing any more.
    return holder.startedAt != BootTime(0) ? std::optional(holder) : std::nullopt;
}

} // namespace zenlot
