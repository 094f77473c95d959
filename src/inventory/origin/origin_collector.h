// Collects the origins of servers. Reads much of the process table, so it belongs on a worker
// thread; it may be asked from several at once.
//
//     const OriginCollector collector(sources, &engines);
//     for (const Origin& origin : collector.originsOnPort(3000)) ...
#pragma once

#include "inventory/origin/bind_obstacle.h"
#include "inventory/origin/container_engines.h"
#include "inventory/origin/container_words.h"
#include "inventory/origin/origin_sources.h"
#include "inventory/origin/wireless_networks.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace zenlot {

// A row of a list: a port and who is shown for it.
struct PortOwner {
    std::uint16_t port{0};
    ProcessIdentity process;

    friend bool operator==(const PortOwner&, const PortOwner&) = default;
};

class OriginCollector {
  public:
    // The references must outlive the collector. `engines` and `networks` may be null.
    explicit OriginCollector(const OriginSources& sources,
                             const ContainerEngines* engines = nullptr,
                             const WirelessNetworks* networks = nullptr)
        : sources_(sources), engines_(engines), networks_(networks) {}

    // Of each server that listens on the port: several may, on different addresses. Looks into all
    // processes for those that share the sockets.
    std::vector<Origin> originsOnPort(std::uint16_t port) const;

    // Of many rows, in their order, from what can be had cheaply: without those who share the
    // sockets and those who started it. A row whose process is gone has an origin without one. One
    // is made at a time, since those of a thousand servers take megabytes.
    void readOrigins(std::span<const PortOwner> rows,
                     const std::function<void(const Origin&)>& take) const;

    // What stands against a server on a port that nobody listens on.
    std::vector<BindObstacle> obstaclesOnPort(std::uint16_t port) const {
        return bindObstacles(sources_, port);
    }

  private:
    // Processes that are one server, and their sockets.
    struct Group {
        std::vector<ProcessId> holders;
        std::set<std::uint64_t> inodes;
    };
    struct Look;

    std::optional<Origin> describe(const ProcessIdentity& process, Look& look) const;
    const std::optional<ProcessGlimpse>& glimpseOf(ProcessId pid, Look& look) const;
    ProgramKind kindOfProcess(ProcessId pid, Look& look) const;
    const std::string& groupPath(std::uint64_t id, Look& look) const;
    std::vector<Starter> startersOf(const ProcessGlimpse& process, Look& look) const;
    std::string starterName(const ProcessGlimpse& starter, ProgramKind kind,
                            const ProcessGlimpse& process) const;
    std::vector<Group> groupsOf(const std::map<ProcessId, std::vector<std::uint64_t>>& holders,
                                Look& look) const;
    void addReachableAddresses(std::vector<Origin>& origins) const;
    void readAhead(std::span<const PortOwner> rows, Look& look) const;
    void keepOwn(Origin& origin) const;
    void addUnseenOwner(Origin& origin, Look& look) const;
    void addPort(Origin& origin, const ProcessGlimpse* glimpse, Look& look) const;
    void addContainer(Origin& origin, const ProcessGlimpse* glimpse, Look& look) const;
    std::optional<PublishedPort> publishedPort(const Origin& origin, const ProcessGlimpse* glimpse,
                                               Look& look) const;
    bool isHelper(ProcessId pid, Look& look) const;
    void nameContainer(Origin& origin, const std::optional<PublishedPort>& published,
                       const ProcessGlimpse* helper, Look& look) const;
    void addLeftBehind(Origin& origin, const ProcessGlimpse& glimpse, Look& look) const;

    const OriginSources& sources_;
    const ContainerEngines* engines_;
    const WirelessNetworks* networks_;
};

} // namespace zenlot
