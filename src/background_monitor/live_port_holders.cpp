#include "background_monitor/live_port_holders.h"

#include "inventory/linux/listening_socket_reader.h"
#include "inventory/linux/sock_diag.h"
#include "inventory/origin/bind_obstacle.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <span>
#include <string>

namespace zenlot {
namespace {

constexpr int kMostAncestors = 32;

// The socket diagnostics of another network are not to be had.
class NoTransport final : public NetlinkTransport {
  public:
    bool dump(std::span<const std::byte>, const Consumer&) override { return false; }
};

// The number of the network that the process lives in; 0 when it may not be looked at.
std::uint32_t networkOf(const std::string& process) {
    struct stat status {};
    return ::stat(("/proc/" + process + "/ns/net").c_str(), &status) == 0
               ? static_cast<std::uint32_t>(status.st_ino)
               : 0;
}

} // namespace

IpAddress addressOf(const BindEvent& event) {
    IpAddress address;
    address.family = event.family == 4 ? AddressFamily::ipv4 : AddressFamily::ipv6;
    std::copy_n(std::begin(event.address), event.family == 4 ? 4 : 16, address.bytes.begin());
    return address;
}

bool standsInTheWay(const ListeningSocket& socket, const BindEvent& refused) {
    const bool leavesIpv4 = refused.family == 6 && (refused.flags & ZENLOT_V6_ONLY) != 0;
    return socket.port == refused.port && overlaps(addressOf(refused), socket) &&
           !(leavesIpv4 && socket.address.family == AddressFamily::ipv4);
}

LivePortHolders::LivePortHolders(const LiveMachine& machine, const AttemptReader& attempts)
    : machine_(machine), attempts_(attempts), ownNetwork_(networkOf("self")) {}

bool LivePortHolders::isOfOwnNetwork(const BindEvent& event) const {
    return event.network_inode == ownNetwork_;
}

HolderAnswer LivePortHolders::holderFor(const BindEvent& refused) const {
    auto listeners = listenersOf(refused);
    if (!listeners)
        return {HolderAnswer::Kind::unseen, {}};
    std::erase_if(*listeners, [&refused](const ListeningSocket& socket) {
        return !standsInTheWay(socket, refused);
    });
    // Of several the one that has just this address.
    std::stable_partition(
        listeners->begin(), listeners->end(),
        [&refused](const ListeningSocket& socket) { return socket.address == addressOf(refused); });
    const auto process = static_cast<ProcessId>(refused.process);
    const std::vector<ProcessId> ancestors = ancestorsOf(refused);
    std::optional<PortHolder> first;
    for (const ListeningSocket& socket : *listeners) {
        const std::optional<PortHolder> holder = machine_.holderOf(socket);
        if (!holder)
            continue;
        if (holder->pid == process ||
            (holder->pid != 0 && std::ranges::find(ancestors, holder->pid) != ancestors.end()) ||
            std::ranges::find(holder->ancestors, process) != holder->ancestors.end())
            return {HolderAnswer::Kind::own, {}};
        if (!first)
            first = holder;
    }
    if (!first)
        return {};
    return {HolderAnswer::Kind::another, *first};
}

std::optional<std::vector<ListeningSocket>>
LivePortHolders::listenersOf(const BindEvent& refused) const {
    if (isOfOwnNetwork(refused)) {
        auto sockets = readListeningSockets(procFiles_, transport_, refused.port);
        addBoundSockets(refused.port, sockets);
        return sockets;
    }
    const auto someone = someoneIn(refused.network_inode, refused);
    if (!someone)
        return std::nullopt;
    NoTransport none;
    return readListeningSockets(ProcFiles("/proc/" + std::to_string(*someone)), none, refused.port);
}

// A port may be held without listening on it, which Linux tells since 6.8. That of a connection is
// nobody's to be ended for.
void LivePortHolders::addBoundSockets(std::uint16_t port,
                                      std::vector<ListeningSocket>& sockets) const {
    for (const AddressFamily family : {AddressFamily::ipv4, AddressFamily::ipv6}) {
        for (const PortUse& use :
             dumpPortUses(transport_, family, port).value_or(std::vector<PortUse>())) {
            if (isBoundOnly(use))
                sockets.push_back({.address = use.address,
                                   .isV6Only = use.isV6Only,
                                   .port = use.port,
                                   .inode = use.inode});
        }
    }
}

// The one that was refused may be gone by now.
std::optional<ProcessId> LivePortHolders::someoneIn(std::uint32_t network,
                                                    const BindEvent& refused) const {
    std::vector<ProcessId> candidates{static_cast<ProcessId>(refused.process),
                                      static_cast<ProcessId>(refused.parent)};
    const std::vector<ProcessId> others = procFiles_.pids();
    candidates.insert(candidates.end(), others.begin(), others.end());
    const auto found = std::ranges::find_if(candidates, [network](ProcessId pid) {
        return pid > 0 && networkOf(std::to_string(pid)) == network;
    });
    return found == candidates.end() ? std::nullopt : std::optional(*found);
}

std::vector<ProcessId> LivePortHolders::ancestorsOf(const BindEvent& refused) const {
    std::vector<ProcessId> ancestors;
    auto pid = static_cast<ProcessId>(refused.parent);
    for (int distance = 0; distance < kMostAncestors && pid > 1; ++distance) {
        ancestors.push_back(pid);
        const auto stat = procFiles_.stat(pid);
        if (!stat)
            break;
        pid = stat->parentPid;
    }
    return ancestors;
}

// A script may be anything, so the row for all of them says nothing.
bool LivePortHolders::isKnownToWant(ProcessId pid, std::uint16_t port) const {
    const auto attempt = attempts_.read(pid);
    if (!attempt)
        return false;
    // One that asks what to do may have its port from a file.
    const bool isWanted = attempt->wanted.port == port ||
                          (attempt->runtime->goesOnWithoutPort && !attempt->wanted.isExplicit());
    return isWanted && !attempt->runtime->mayNamePortItself &&
           std::ranges::find(attempt->runtime->programs, kAnyProgram) ==
               attempt->runtime->programs.end();
}

std::size_t LivePortHolders::commandKeyOf(ProcessId pid) const {
    const std::string folder = std::to_string(pid);
    const auto commandLine = procFiles_.read(folder + "/cmdline");
    return commandLine && !commandLine->empty() ? std::hash<std::string>()(*commandLine) : 0;
}

bool LivePortHolders::isShellOfTerminal(ProcessId pid) const {
    const auto stat = procFiles_.stat(pid);
    return stat && stat->hasTerminal && stat->sessionLeader == pid;
}

} // namespace zenlot
