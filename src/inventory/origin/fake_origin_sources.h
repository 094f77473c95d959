// A machine for tests, as far as origins are concerned.
#pragma once

#include "inventory/origin/origin_sources.h"

#include <algorithm>

namespace zenlot {

class FakeOriginSources final : public OriginSources {
  public:
    std::map<ProcessId, ProcessGlimpse> processes;
    std::vector<ListeningSocket> sockets;
    std::map<ProcessId, std::vector<std::uint64_t>> held; // inodes
    std::map<std::uint16_t, std::size_t> clients;
    std::map<std::uint64_t, std::string> groups;
    std::map<std::string, std::vector<ProcessId>> members;
    std::vector<NetworkAddress> addresses;
    std::vector<PortUse> uses; // of whatever does not listen

    ProcessGlimpse& addProcess(ProcessId pid, std::vector<std::string> commandLine) {
        ProcessGlimpse& process = processes[pid];
        process.process = {pid, 1};
        process.commandLine = std::move(commandLine);
        process.name = process.commandLine.front();
        return process;
    }

    // A process that listens on an address and port.
    ProcessGlimpse& addServer(ProcessId pid, std::vector<std::string> commandLine,
                              std::uint16_t port, const char* address = "127.0.0.1") {
        const std::uint64_t inode = sockets.size() + 1;
        ListeningSocket& socket = sockets.emplace_back();
        socket.address = IpAddress::parse(address).value_or(IpAddress());
        socket.port = port;
        socket.inode = inode;
        held[pid].push_back(inode);
        return addProcess(pid, std::move(commandLine));
    }

    std::vector<ProcessId> pids() const override {
        std::vector<ProcessId> pids;
        for (const auto& [pid, glimpse] : processes)
            pids.push_back(pid);
        return pids;
    }
    std::optional<ProcessGlimpse> process(ProcessId pid) const override {
        const auto found = processes.find(pid);
        return found == processes.end() ? std::nullopt : std::optional(found->second);
    }
    std::string nameOf(ProcessId pid) const override {
        const auto found = processes.find(pid);
        return found == processes.end() ? std::string() : found->second.name;
    }
    std::string environmentVariable(ProcessId /*pid*/, const std::string& /*name*/) const override {
        return {};
    }
    std::vector<ListeningSocket>
    listeningSockets(std::optional<std::uint16_t> port) const override {
        std::vector<ListeningSocket> found;
        std::ranges::copy_if(
            sockets, std::back_inserter(found),
            [port](const ListeningSocket& each) { return !port || each.port == *port; });
        return found;
    }
    std::map<std::uint16_t, std::size_t>
    connections(std::optional<std::uint16_t> /*port*/) const override {
        return clients;
    }
    std::vector<PortUse> usesOfPort(std::uint16_t port) const override {
        std::vector<PortUse> found;
        std::ranges::copy_if(uses, std::back_inserter(found),
                             [port](const PortUse& each) { return each.port == port; });
        return found;
    }
    std::vector<std::uint64_t> socketsHeldBy(ProcessId pid,
                                             std::span<const std::uint64_t> inodes) const override {
        std::vector<std::uint64_t> found;
        if (const auto holder = held.find(pid); holder != held.end())
            std::ranges::copy_if(holder->second, std::back_inserter(found),
                                 [inodes](std::uint64_t inode) {
                                     return std::ranges::find(inodes, inode) != inodes.end();
                                 });
        return found;
    }
    std::string controlGroupPath(std::uint64_t id) const override {
        const auto found = groups.find(id);
        return found == groups.end() ? std::string() : found->second;
    }
    std::vector<ProcessId> membersOf(const std::string& controlGroupPath) const override {
        const auto found = members.find(controlGroupPath);
        return found == members.end() ? std::vector<ProcessId>() : found->second;
    }
    bool isInNetworkOf(ProcessId /*pid*/, const IpAddress& /*address*/) const override {
        return false;
    }
    std::vector<std::uint64_t> pipesOf(ProcessId /*pid*/) const override { return {}; }
    std::vector<NetworkAddress> networkAddresses() const override { return addresses; }
    std::string reservedPorts() const override { return {}; }
    std::uint16_t firstUnprivilegedPort() const override { return 1024; }
};

} // namespace zenlot
