#include "inventory/repeated_port_scan.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <span>
#include <utility>

namespace zenlot {
namespace {

bool isSameSocket(const TcpTableEntry& before, const TcpTableEntry& after) {
    return after.identity && before == after;
}

// The ports on which other sockets listen than before. Both tables are in ascending order of port.
PortSet changedPorts(std::span<const TcpTableEntry> before, std::span<const TcpTableEntry> after) {
    const auto takePort = [](std::span<const TcpTableEntry>& table, std::uint16_t port) {
        const auto end = std::ranges::find_if(
            table, [port](const TcpTableEntry& entry) { return entry.localPort != port; });
        const auto entries = table.first(static_cast<std::size_t>(end - table.begin()));
        table = table.subspan(entries.size());
        return entries;
    };
    PortSet changed;
    while (!before.empty() || !after.empty()) {
        const std::uint16_t port =
            before.empty()  ? after.front().localPort
            : after.empty() ? before.front().localPort
                            : std::min(before.front().localPort, after.front().localPort);
        if (!std::ranges::equal(takePort(before, port), takePort(after, port), isSameSocket))
            changed.set(port);
    }
    return changed;
}

} // namespace

RepeatedPortScan::RepeatedPortScan(const PortScanner& scanner, Clock clock,
                                   std::chrono::seconds longestReuse)
    : scanner_(scanner), clock_(std::move(clock)), longestReuse_(longestReuse),
      ports_(std::make_shared<const std::vector<OccupiedPort>>()) {}

PolledPorts RepeatedPortScan::poll() {
    const std::lock_guard lock(mutex_);
    const Time now = clock_();
    const auto snapshot = scanner_.tables().beginSnapshot(std::nullopt);
    Table table = snapshot->tcpTable();
    std::ranges::stable_sort(table, {}, &TcpTableEntry::localPort);
    noteProcesses(PortScanner::listAllPids(*snapshot), now);

    PortSet ports;
    if (allLookedUpAt_ && now - *allLookedUpAt_ <= longestReuse_) {
        ports = portsToLookUp(*snapshot, table);
    } else {
        ports.set();
        allLookedUpAt_ = now;
    }
    ports.reset(0);
    if (ports.any())
        ports_ = lookUp(*snapshot, ports);

    table_ = std::move(table);
    std::erase_if(young_,
                  [now](const auto& process) { return now - process.second >= kSettlingTime; });
    return {ports_, snapshot->silentFamilies()};
}

SharedPorts RepeatedPortScan::dropClosedPorts() {
    const std::lock_guard lock(mutex_);
    const auto snapshot = scanner_.tables().beginSnapshot(std::nullopt);
    PortSet open;
    for (const TcpTableEntry& entry : snapshot->tcpTable())
        open.set(entry.localPort);
    const auto isClosed = [&open](const OccupiedPort& record) {
        return !open[static_cast<std::size_t>(record.port)];
    };
    // Ports of a family that the kernel says nothing of may be open.
    if (snapshot->silentFamilies().empty() && std::ranges::any_of(*ports_, isClosed)) {
        std::vector<OccupiedPort> list = *ports_;
        std::erase_if(list, isClosed);
        ports_ = std::make_shared<const std::vector<OccupiedPort>>(std::move(list));
    }
    return ports_;
}

// Processes that start after this listing are new in the next one, also when the walk saw them.
void RepeatedPortScan::noteProcesses(std::vector<ProcessId> pids, Time now) {
    std::ranges::sort(pids);
    std::vector<ProcessId> newcomers;
    std::ranges::set_difference(pids, processes_, std::back_inserter(newcomers));
    for (const ProcessId pid : newcomers)
        young_.emplace(pid, now);
    processes_ = std::move(pids);
}

PortSet RepeatedPortScan::portsToLookUp(const ProcessSnapshot& snapshot, const Table& table) const {
    PortSet ports = changedPorts(table_, table);
    for (const OccupiedPort& record : *ports_) {
        const auto owner = static_cast<ProcessId>(record.pid);
        if (owner != 0 &&
            (young_.contains(owner) || !std::ranges::binary_search(processes_, owner)))
            ports.set(static_cast<std::size_t>(record.port));
    }
    std::vector<TcpSocket> sockets;
    for (const auto& [pid, firstSeen] : young_)
        snapshot.appendTcpSockets(pid, sockets);
    for (const TcpSocket& socket : sockets) {
        if (socket.state == TcpState::listen)
            ports.set(socket.localPort);
    }
    return ports;
}

SharedPorts RepeatedPortScan::lookUp(const ProcessSnapshot& snapshot, const PortSet& ports) const {
    std::vector<OccupiedPort> list;
    std::ranges::copy_if(*ports_, std::back_inserter(list), [&ports](const OccupiedPort& record) {
        return !ports[static_cast<std::size_t>(record.port)];
    });
    std::vector<OccupiedPort> found = scanner_.scanSnapshot(snapshot, ports);
    list.reserve(list.size() + found.size());
    std::ranges::move(found, std::back_inserter(list));
    std::ranges::sort(list, {}, &OccupiedPort::port);
    return std::make_shared<const std::vector<OccupiedPort>>(std::move(list));
}

} // namespace zenlot
