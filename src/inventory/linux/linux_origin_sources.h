// Where Linux keeps what origins are made of: /proc for the processes, the socket diagnostics for
// the ports, the tree of control groups for units and containers.
//
// Command lines and control groups can be read of every process, folders and descriptors only of
// those that the user may look into.
#pragma once

#include "inventory/linux/netlink_transport.h"
#include "inventory/linux/proc_files.h"
#include "inventory/origin/origin_sources.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace zenlot {

class LinuxOriginSources final : public OriginSources {
  public:
    explicit LinuxOriginSources(
        const std::string& procRoot = "/proc",
        std::unique_ptr<NetlinkTransport> transport = std::make_unique<SockDiagTransport>(),
        const std::string& controlGroups = "/sys/fs/cgroup");

    std::vector<ProcessId> pids() const override;
    std::optional<ProcessGlimpse> process(ProcessId pid) const override;
    std::string environmentVariable(ProcessId pid, const std::string& name) const override;
    std::vector<ListeningSocket> listeningSockets(std::optional<std::uint16_t> port) const override;
    std::map<std::uint16_t, std::size_t>
    connections(std::optional<std::uint16_t> port) const override;
    std::vector<PortUse> usesOfPort(std::uint16_t port) const override;
    std::vector<std::uint64_t> socketsHeldBy(ProcessId pid,
                                             std::span<const std::uint64_t> inodes) const override;
    std::string controlGroupPath(std::uint64_t id) const override;
    std::vector<ProcessId> membersOf(const std::string& controlGroupPath) const override;
    bool isInNetworkOf(ProcessId pid, const IpAddress& address) const override;
    std::vector<std::uint64_t> pipesOf(ProcessId pid) const override;
    std::vector<NetworkAddress> networkAddresses() const override;
    std::string reservedPorts() const override;
    std::uint16_t firstUnprivilegedPort() const override;

  private:
    ProcFiles procFiles_;
    std::unique_ptr<NetlinkTransport> transport_;
    std::string controlGroups_; // where the tree of the service manager begins
    mutable std::mutex mutex_;  // guards what follows
    mutable std::map<std::uint64_t, std::string> groupPaths_;
    mutable std::chrono::steady_clock::time_point groupsReadAt_;
};

} // namespace zenlot
