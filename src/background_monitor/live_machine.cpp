#include "background_monitor/live_machine.h"

#include "background_monitor/attempt_reader.h"
#include "background_monitor/port_text.h"
#include "background_monitor/source_reader.h"
#include "inventory/linux/control_group.h"
#include "inventory/linux/listening_socket_reader.h"
#include "inventory/linux/tcp_socket_table.h"
#include "inventory/process_names.h"

#include <ifaddrs.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace zenlot {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLargestTree = 256;
constexpr int kMostAncestorsOfHolder = 32;
constexpr std::string_view kUsualUnprivilegedStart = "1024";
// Ten times what a reader takes at most on a disk that answers.
constexpr std::chrono::seconds kLongestReading{4};
constexpr std::size_t kShownDigits = 12; // of a container's number, as its own tools show it

bool isServiceManagerName(std::string_view name) {
    return name == "systemd" || name == "(sd-pam)";
}

bool isAddressOfMachine(const IpAddress& address) {
    const bool isLoopback = address.family == AddressFamily::ipv4
                                ? address.bytes[0] == IN_LOOPBACKNET
                                : address == *IpAddress::parse("::1");
    if (isLoopback || address.isWildcard())
        return true;
    ifaddrs* first = nullptr;
    if (::getifaddrs(&first) != 0)
        return true;
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> interfaces(first, ::freeifaddrs);
    for (const ifaddrs* each = first; each != nullptr; each = each->ifa_next) {
        if (each->ifa_addr == nullptr)
            continue;
        if (each->ifa_addr->sa_family == AF_INET && address.family == AddressFamily::ipv4) {
            sockaddr_in own{};
            std::memcpy(&own, each->ifa_addr, sizeof own);
            if (std::memcmp(&own.sin_addr, address.bytes.data(), sizeof own.sin_addr) == 0)
                return true;
        } else if (each->ifa_addr->sa_family == AF_INET6 && address.family == AddressFamily::ipv6) {
            sockaddr_in6 own{};
            std::memcpy(&own, each->ifa_addr, sizeof own);
            if (std::memcmp(&own.sin6_addr, address.bytes.data(), sizeof own.sin6_addr) == 0)
                return true;
        }
    }
    return false;
}

} // namespace

std::string nameOfControlGroup(std::string_view folder) {
    for (const std::string_view ending : {".service", ".socket"}) {
        if (folder.ends_with(ending))
            return std::string(folder.substr(0, folder.size() - ending.size()));
    }
    constexpr std::array<std::string_view, 4> kContainers{"docker-", "libpod-", "cri-containerd-",
                                                          "crio-"};
    for (const std::string_view container : kContainers) {
        if (folder.starts_with(container) && folder.ends_with(".scope"))
            return std::string(container) +
                   std::string(folder.substr(container.size(), kShownDigits));
    }
    return {};
}

bool mentionsNumber(std::string_view commandLine, std::uint16_t number) {
    const std::string digits = std::to_string(number);
    for (std::size_t place = commandLine.find(digits); place != std::string_view::npos;
         place = commandLine.find(digits, place + 1)) {
        const std::size_t end = place + digits.size();
        if ((place == 0 || !isDigit(commandLine[place - 1])) &&
            (end == commandLine.size() || !isDigit(commandLine[end])))
            return true;
    }
    return false;
}

LiveMachine::LiveMachine(OwnerHint ownerHint)
    : ownerHint_(std::move(ownerHint)), reading_(kLongestReading) {}

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

bool LiveMachine::keepsUnusedSocket(ProcessId pid) const {
    constexpr std::size_t kLongestName = 16;
    std::vector<std::uint64_t> inodes;
    std::error_code error;
    for (fs::directory_iterator file("/proc/" + std::to_string(pid) + "/fd", error), end;
         !error && file != end; file.increment(error)) {
        std::error_code ignored;
        const auto inode = socketInode(fs::read_symlink(file->path(), ignored).native());
        if (!inode)
            continue;
        std::array<char, kLongestName> name{};
        const ssize_t length =
            ::getxattr(file->path().c_str(), "system.sockprotoname", name.data(), name.size() - 1);
        if (length > 0 && std::string_view(name.data()).starts_with("TCP"))
            inodes.push_back(*inode);
    }
    if (inodes.empty())
        return false;
    const TcpSocketTable table =
        readTcpSockets(procFiles_, transport_, SocketScope::held, std::nullopt);
    if (!table.silentFamilies.empty())
        return false;
    // Those that are neither bound nor connected stand in no table of the kernel.
    return std::ranges::any_of(inodes, [&table](std::uint64_t inode) {
        return std::ranges::find(table.sockets, inode, &KernelTcpSocket::inode) ==
               table.sockets.end();
    });
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

// Another user's processes may not be looked into, but everybody may know their names, users and
// arguments, and which control group a socket belongs to.
PortHolder LiveMachine::describeUnseen(const ListeningSocket& socket) const {
    PortHolder holder;
    const auto group = findControlGroup(socket.controlGroup);
    const std::vector<ProcessId> members =
        processesOf(socket.ownerUid, group ? group->processes : procFiles_.pids());
    std::vector<ProcessId> mentioning;
    std::ranges::copy_if(members, std::back_inserter(mentioning), [&](ProcessId pid) {
        const auto commandLine = procFiles_.read(std::to_string(pid) + "/cmdline");
        return commandLine && mentionsNumber(*commandLine, socket.port);
    });
    // All of a user's processes say nothing; those of one service do.
    const bool isFound = (group && nameAfter(holder, members)) || nameAfter(holder, mentioning);
    if (!isFound && group)
        holder.processName = sanitizedUtf8(nameOfControlGroup(group->name));
    holder.displayName = makeDisplayName({}, holder.processName);
    return holder;
}

std::vector<ProcessId> LiveMachine::processesOf(UserId user,
                                                std::span<const ProcessId> among) const {
    std::vector<ProcessId> found;
    std::ranges::copy_if(among, std::back_inserter(found), [this, user](ProcessId pid) {
        const auto status = procFiles_.status(pid);
        return status && status->effectiveUid == user && !status->hasEnded;
    });
    return found;
}

// The oldest of several that are called the same started the others. Of different ones nobody knows
// which it is.
bool LiveMachine::nameAfter(PortHolder& holder, std::span<const ProcessId> pids) const {
    std::set<std::string> names;
    std::optional<std::pair<BootTime, ProcessId>> oldest;
    for (const ProcessId pid : pids) {
        const auto stat = procFiles_.stat(pid);
        const std::string name =
            procFiles_.read(std::to_string(pid) + "/comm").value_or(std::string());
        if (!stat || name.empty() || isServiceManagerName(name.substr(0, name.find('\n'))))
            continue;
        names.insert(name.substr(0, name.find('\n')));
        const std::pair candidate{bootTimeOfTicks(stat->startTicks), pid};
        oldest = oldest ? std::min(*oldest, candidate) : candidate;
    }
    if (names.size() != 1 || !oldest)
        return false;
    holder.pid = oldest->second;
    holder.startedAt = oldest->first;
    holder.processName = sanitizedUtf8(*names.begin());
    return true;
}

std::vector<PortAnswer> LiveMachine::writtenPorts(const Attempt& attempt,
                                                  std::span<const std::uint16_t> held) const {
    const auto ask = [attempt = attempt,
                      runtime = std::make_shared<const Runtime>(*attempt.runtime),
                      held = std::vector(held.begin(), held.end())]() mutable {
        attempt.runtime = runtime.get();
        return answersInFilesOf(attempt, held, isAddressOfMachine);
    };
    return reading_.run<std::vector<PortAnswer>>(ask).value_or(std::vector<PortAnswer>());
}

bool LiveMachine::mayListenOn(std::uint16_t port) const {
    if (currentUserId() == 0)
        return true;
    std::istringstream text(procFiles_.read("sys/net/ipv4/ip_unprivileged_port_start")
                                .value_or(std::string(kUsualUnprivilegedStart)));
    int start = 0;
    text >> start;
    return port >= start;
}

bool LiveMachine::hasAddress(const IpAddress& address) const {
    return isAddressOfMachine(address);
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
    return isServiceManagerName(processNameOf(procFiles_.executablePath(pid)));
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
