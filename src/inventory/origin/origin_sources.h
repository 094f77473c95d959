// What the collector of origins asks of an operating system. Nothing fails loudly: what can't be
// read is empty. May be asked from several threads at once.
#pragma once

#include "inventory/origin/origin.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zenlot {

// A process as it stands in the process table.
struct ProcessGlimpse {
    ProcessIdentity process;
    ProcessId parent{0}; // 0 for none
    UserId user{0};
    std::string name;                     // that it has given itself, cut off after 15 bytes
    std::vector<std::string> commandLine; // of anybody's process
    std::string executable;               // empty for other users' processes
    std::string workingDirectory;         // likewise
    bool isDirectoryDeleted{false};
    bool hasTerminal{false};
    ProcessId session{0};
    std::string controlGroup; // its path in the tree of the service manager

    friend bool operator==(const ProcessGlimpse&, const ProcessGlimpse&) = default;
};

// A socket on a port, in whatever state: what stands against a bind where nobody listens.
struct PortUse {
    TcpState state{TcpState::unknown};
    IpAddress address;
    std::uint16_t port{0};
    std::uint16_t foreignPort{0};
    bool isV6Only{false};                   // where it is bound only
    std::uint64_t inode{0};                 // 0 when no process holds it any more
    std::chrono::milliseconds remaining{0}; // until the kernel lets go, in TIME_WAIT

    friend bool operator==(const PortUse&, const PortUse&) = default;
};

class OriginSources {
  public:
    OriginSources() = default;
    OriginSources(const OriginSources&) = delete;
    OriginSources& operator=(const OriginSources&) = delete;
    virtual ~OriginSources() = default;

    virtual std::vector<ProcessId> pids() const = 0;
    virtual std::optional<ProcessGlimpse> process(ProcessId pid) const = 0;
    // What ProcessGlimpse calls the name, for little.
    virtual std::string nameOf(ProcessId pid) const = 0;
    // A variable that the process was started with.
    virtual std::string environmentVariable(ProcessId pid, const std::string& name) const = 0;

    // On one port or on all.
    virtual std::vector<ListeningSocket>
    listeningSockets(std::optional<std::uint16_t> port) const = 0;
    // How many connections there are to each port that has any; of one port or of all.
    virtual std::map<std::uint16_t, std::size_t>
    connections(std::optional<std::uint16_t> port) const = 0;
    // Everything on a port that does not listen.
    virtual std::vector<PortUse> usesOfPort(std::uint16_t port) const = 0;
    // The sockets among these that the process holds, by inode.
    virtual std::vector<std::uint64_t>
    socketsHeldBy(ProcessId pid, std::span<const std::uint64_t> inodes) const = 0;

    // The path of a control group, and who is in it.
    virtual std::string controlGroupPath(std::uint64_t id) const = 0;
    virtual std::vector<ProcessId> membersOf(const std::string& controlGroupPath) const = 0;
    // Whether an address belongs to the network that the process is in.
    virtual bool isInNetworkOf(ProcessId pid, const IpAddress& address) const = 0;
    // Numbers that name what the processes share, such as pipes; none of other users' processes.
    virtual std::vector<std::uint64_t> pipesOf(ProcessId pid) const = 0;

    virtual std::vector<NetworkAddress> networkAddresses() const = 0;
    // What the system says of ports in general.
    virtual std::string reservedPorts() const = 0;           // "8080,9000-9010"
    virtual std::uint16_t firstUnprivilegedPort() const = 0; // 1024 mostly
};

} // namespace zenlot
