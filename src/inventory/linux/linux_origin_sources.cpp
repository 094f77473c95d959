#include "inventory/linux/linux_origin_sources.h"

#include "inventory/linux/control_group.h"
#include "inventory/linux/listening_socket_reader.h"
#include "inventory/linux/sock_diag.h"
#include "inventory/linux/tcp_socket_table.h"
#include "inventory/origin/reach.h"

#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <utility>

namespace zenlot {
namespace {

constexpr std::size_t kMostWords = 512;
constexpr std::chrono::seconds kGroupsKeptFor{1};

std::vector<std::string> wordsOf(std::string_view commandLine) {
    std::vector<std::string> words;
    while (!commandLine.empty() && words.size() < kMostWords) {
        const std::string_view word = commandLine.substr(0, commandLine.find('\0'));
        words.emplace_back(word);
        commandLine.remove_prefix(std::min(commandLine.size(), word.size() + 1));
    }
    // Who rewrites its title leaves empty words where its arguments were.
    while (!words.empty() && words.back().empty())
        words.pop_back();
    return words;
}

// The line of the unified hierarchy, or of the one that a service manager of an older system has.
std::string groupOf(std::string_view text) {
    for (const std::string_view start : {":name=systemd:", "0::"}) {
        for (std::string_view rest = text; !rest.empty();) {
            const std::string_view line = rest.substr(0, rest.find('\n'));
            rest.remove_prefix(std::min(rest.size(), line.size() + 1));
            const std::size_t found = line.find(start);
            if (found == std::string_view::npos || (start == "0::" && found != 0))
                continue;
            const std::string_view path = line.substr(found + start.size());
            if (path.size() > 1)
                return std::string(path);
        }
    }
    return {};
}

// Networks that this machine has made for its own containers and machines.
bool isInternal(std::string_view interface) {
    constexpr std::array<std::string_view, 8> kBeginnings{"docker", "br-",    "veth", "virbr",
                                                          "cni",    "podman", "lxc",  "vnet"};
    return std::ranges::any_of(kBeginnings, [interface](std::string_view beginning) {
        return interface.starts_with(beginning);
    });
}

std::optional<std::uint64_t> pipeInode(std::string_view link) {
    constexpr std::string_view kPrefix = "pipe:[";
    std::uint64_t inode{};
    if (!link.starts_with(kPrefix) ||
        std::from_chars(link.data() + kPrefix.size(), link.data() + link.size(), inode).ec !=
            std::errc())
        return std::nullopt;
    return inode;
}

} // namespace

LinuxOriginSources::LinuxOriginSources(const std::string& procRoot,
                                       std::unique_ptr<NetlinkTransport> transport,
                                       const std::string& controlGroups)
    : procFiles_(procRoot), transport_(std::move(transport)),
      controlGroups_(unifiedControlGroups(controlGroups)) {}

std::vector<ProcessId> LinuxOriginSources::pids() const {
    return procFiles_.pids();
}

std::optional<ProcessGlimpse> LinuxOriginSources::process(ProcessId pid) const {
    constexpr std::string_view kDeleted = " (deleted)";
    const auto stat = procFiles_.stat(pid);
    const auto user = procFiles_.effectiveUid(pid);
    if (!stat || !user || stat->state == ProcessState::zombie)
        return std::nullopt;
    const std::string folder = std::to_string(pid) + "/";
    ProcessGlimpse glimpse;
    glimpse.process = {pid, stat->startTicks};
    glimpse.parent = stat->parentPid;
    glimpse.user = *user;
    glimpse.name = stat->name;
    glimpse.commandLine = wordsOf(procFiles_.read(folder + "cmdline").value_or(std::string()));
    glimpse.executable = procFiles_.executablePath(pid);
    glimpse.workingDirectory = procFiles_.link(folder + "cwd");
    std::error_code ignored;
    // A folder may really be called so.
    if (glimpse.workingDirectory.ends_with(kDeleted) &&
        !std::filesystem::exists(glimpse.workingDirectory, ignored)) {
        glimpse.isDirectoryDeleted = true;
        glimpse.workingDirectory.resize(glimpse.workingDirectory.size() - kDeleted.size());
    }
    glimpse.hasTerminal = stat->hasTerminal;
    glimpse.session = stat->sessionLeader;
    glimpse.controlGroup = groupOf(procFiles_.read(folder + "cgroup").value_or(std::string()));
    return glimpse;
}

std::string LinuxOriginSources::nameOf(ProcessId pid) const {
    return procFiles_.commandName(pid);
}

std::string LinuxOriginSources::environmentVariable(ProcessId pid, const std::string& name) const {
    const auto text = procFiles_.read(std::to_string(pid) + "/environ");
    if (!text)
        return {};
    for (std::string_view rest = *text; !rest.empty();) {
        const std::string_view entry = rest.substr(0, rest.find('\0'));
        rest.remove_prefix(std::min(rest.size(), entry.size() + 1));
        if (entry.size() > name.size() && entry.starts_with(name) && entry[name.size()] == '=')
            return std::string(entry.substr(name.size() + 1));
    }
    return {};
}

std::vector<ListeningSocket>
LinuxOriginSources::listeningSockets(std::optional<std::uint16_t> port) const {
    return readListeningSockets(procFiles_, *transport_, port);
}

// Each connection inside of the machine stands there twice; the server's end has the server's port.
std::map<std::uint16_t, std::size_t>
LinuxOriginSources::connections(std::optional<std::uint16_t> port) const {
    std::map<std::uint16_t, std::size_t> counts;
    for (const KernelTcpSocket& socket :
         readTcpSockets(procFiles_, *transport_, SocketScope::held, port).sockets) {
        if (socket.socket.state == TcpState::established)
            ++counts[socket.socket.localPort];
    }
    return counts;
}

std::vector<PortUse> LinuxOriginSources::usesOfPort(std::uint16_t port) const {
    std::vector<PortUse> uses;
    for (const AddressFamily family : {AddressFamily::ipv4, AddressFamily::ipv6}) {
        if (auto dumped = dumpPortUses(*transport_, family, port))
            uses.insert(uses.end(), dumped->begin(), dumped->end());
    }
    return uses;
}

std::vector<std::uint64_t>
LinuxOriginSources::socketsHeldBy(ProcessId pid, std::span<const std::uint64_t> inodes) const {
    std::vector<std::uint64_t> held;
    procFiles_.forEachSocketInode(pid, [&](std::uint64_t inode) {
        if (inode != 0 && std::ranges::find(inodes, inode) != inodes.end())
            held.push_back(inode);
    });
    return held;
}

std::string LinuxOriginSources::controlGroupPath(std::uint64_t id) const {
    const std::lock_guard lock(mutex_);
    auto found = groupPaths_.find(id);
    const auto now = std::chrono::steady_clock::now();
    // A group that is not known may have been made since, but asking has its price.
    if (found == groupPaths_.end() && now - groupsReadAt_ >= kGroupsKeptFor) {
        groupPaths_ = controlGroupPaths(controlGroups_);
        groupsReadAt_ = now;
        found = groupPaths_.find(id);
    }
    return found == groupPaths_.end() ? std::string() : found->second;
}

std::vector<ProcessId> LinuxOriginSources::membersOf(const std::string& controlGroupPath) const {
    std::vector<ProcessId> members;
    if (!controlGroupPath.starts_with('/'))
        return members;
    std::ifstream file(controlGroups_ + controlGroupPath + "/cgroup.procs");
    for (ProcessId pid = 0; file >> pid;)
        members.push_back(pid);
    return members;
}

// The routes of a network are everybody's to read, by way of any process in it.
bool LinuxOriginSources::isInNetworkOf(ProcessId pid, const IpAddress& address) const {
    const auto routes = procFiles_.read(std::to_string(pid) + "/net/fib_trie");
    if (!routes || address.family != AddressFamily::ipv4)
        return false;
    const std::string leaf = " " + addressText(address) + "\n";
    for (std::size_t place = routes->find(leaf); place != std::string::npos;
         place = routes->find(leaf, place + 1)) {
        const std::size_t next = place + leaf.size();
        const std::string_view line =
            std::string_view(*routes).substr(next, routes->find('\n', next) - next);
        if (line.ends_with("host LOCAL"))
            return true;
    }
    return false;
}

std::vector<std::uint64_t> LinuxOriginSources::pipesOf(ProcessId pid) const {
    std::vector<std::uint64_t> pipes;
    procFiles_.forEachDescriptor(pid, [&pipes](std::string_view link) {
        if (const auto inode = pipeInode(link))
            pipes.push_back(*inode);
    });
    return pipes;
}

std::vector<NetworkAddress> LinuxOriginSources::networkAddresses() const {
    std::vector<NetworkAddress> addresses;
    ifaddrs* list = nullptr;
    if (::getifaddrs(&list) != 0)
        return addresses;
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> closing(list, ::freeifaddrs);
    for (const ifaddrs* each = list; each != nullptr; each = each->ifa_next) {
        if (each->ifa_addr == nullptr || (each->ifa_flags & IFF_UP) == 0 ||
            (each->ifa_flags & IFF_LOOPBACK) != 0 || isInternal(each->ifa_name))
            continue;
        NetworkAddress address;
        if (each->ifa_addr->sa_family == AF_INET) {
            const auto* generic = reinterpret_cast<const sockaddr_in*>(each->ifa_addr);
            std::copy_n(reinterpret_cast<const std::uint8_t*>(&generic->sin_addr), 4,
                        address.address.bytes.begin());
        } else if (each->ifa_addr->sa_family == AF_INET6) {
            const auto* generic = reinterpret_cast<const sockaddr_in6*>(each->ifa_addr);
            if (IN6_IS_ADDR_LINKLOCAL(&generic->sin6_addr))
                continue;
            address.address.family = AddressFamily::ipv6;
            std::ranges::copy(generic->sin6_addr.s6_addr, address.address.bytes.begin());
        } else {
            continue;
        }
        address.interface = each->ifa_name;
        std::error_code ignored;
        address.isWireless =
            std::filesystem::exists("/sys/class/net/" + address.interface + "/wireless", ignored);
        addresses.push_back(std::move(address));
    }
    return addresses;
}

std::string LinuxOriginSources::reservedPorts() const {
    std::string ports =
        procFiles_.read("sys/net/ipv4/ip_local_reserved_ports").value_or(std::string());
    ports.resize(std::min(ports.size(), ports.find('\n')));
    return ports;
}

std::uint16_t LinuxOriginSources::firstUnprivilegedPort() const {
    constexpr std::uint16_t kUsual = 1024;
    const auto text = procFiles_.read("sys/net/ipv4/ip_unprivileged_port_start");
    std::uint16_t port = kUsual;
    if (text)
        std::from_chars(text->data(), text->data() + text->size(), port);
    return port;
}

} // namespace zenlot
