#include "inventory/port_scanner.h"

#include "inventory/process_names.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace zenlot {
namespace {

// Below this many processes a further thread costs more than it saves.
constexpr std::size_t kProcessesPerWorker = 48;
constexpr std::size_t kProbesPerWorker = 4096;
constexpr std::size_t kPortCount = 65535;

PortSet portsThatPass(std::optional<std::int64_t> portFilter) {
    PortSet ports;
    if (!portFilter)
        ports.set().reset(0);
    else if (isValidPort(*portFilter))
        ports.set(static_cast<std::size_t>(*portFilter));
    return ports;
}

std::vector<std::uint16_t> portsIn(const PortSet& ports) {
    std::vector<std::uint16_t> numbers;
    for (std::size_t port = 1; port < ports.size(); ++port) {
        if (ports[port])
            numbers.push_back(static_cast<std::uint16_t>(port));
    }
    return numbers;
}

// A listening port found at one place of the walk.
struct Finding {
    std::size_t pidIndex;
    OccupiedPort record;
};

// The ports whose owner still has to be found. Once a port was found at some place of the walk,
// only later places can change its owner.
class OpenPorts {
  public:
    explicit OpenPorts(std::vector<std::uint16_t> ports)
        : ports_(std::move(ports)), found_(ports_.size()), openCount_(ports_.size()) {}

    void markFound(std::uint16_t port) {
        const auto place = std::lower_bound(ports_.begin(), ports_.end(), port);
        if (place == ports_.end() || *place != port)
            return;
        if (!found_[static_cast<std::size_t>(place - ports_.begin())].exchange(true))
            --openCount_;
    }

    bool empty() const { return openCount_ == 0; }

  private:
    std::vector<std::uint16_t> ports_;
    std::vector<std::atomic<bool>> found_;
    std::atomic<std::size_t> openCount_;
};

// Runs the task on `count` threads, the calling one included, and returns when all have ended.
template <typename Task>
void runOnWorkers(std::size_t count, Task&& task) {
    std::vector<std::jthread> workers;
    for (std::size_t i = 1; i < count; ++i) {
        try {
            workers.emplace_back(std::ref(task));
        } catch (const std::system_error&) {
            break; // Out of threads: those that run share the work.
        }
    }
    task();
}

OccupiedPort recordWithoutOwner(std::uint16_t port, AddressFamily family) {
    OccupiedPort record;
    record.port = port;
    record.proto = protoName(family);
    return record;
}

// One record without an owner for each port, in ascending order.
std::vector<OccupiedPort> recordsOfTable(const ProcessSnapshot& snapshot, PortSet ports) {
    std::vector<OccupiedPort> records;
    for (const TcpTableEntry& entry : snapshot.tcpTable()) {
        // A socket with a peer is a connection, even on a port that is listened on.
        if (entry.foreignPort != 0 || !ports[entry.localPort])
            continue;
        ports.reset(entry.localPort);
        OccupiedPort& record =
            records.emplace_back(recordWithoutOwner(entry.localPort, entry.family));
        record.user = std::to_string(entry.ownerUid);
    }
    std::ranges::stable_sort(records, {}, &OccupiedPort::port);
    return records;
}

// The records of one process: one for each port, with the family of its first descriptor.
void appendRecordsOfProcess(const ProcessSnapshot& snapshot, ProcessId pid, const PortSet& ports,
                            const std::vector<TcpSocket>& sockets,
                            std::vector<OccupiedPort>& records) {
    const std::size_t first = records.size();
    for (const TcpSocket& socket : sockets) {
        if (socket.state != TcpState::listen || !ports[socket.localPort])
            continue;
        const bool known = std::any_of(
            records.begin() + static_cast<std::ptrdiff_t>(first), records.end(),
            [&socket](const OccupiedPort& record) { return record.port == socket.localPort; });
        if (!known)
            records.push_back(recordWithoutOwner(socket.localPort, socket.family));
    }
    if (records.size() == first)
        return;

    // A user id that can't be read counts as root's, so that the record is nobody's by mistake.
    const std::string user = std::to_string(snapshot.realUid(pid).value_or(0));
    const std::optional<std::int64_t> startTime = snapshot.startTime(pid);
    const std::string path = snapshot.executablePath(pid);
    const std::string name = processNameOf(path);
    const std::string displayName = makeDisplayName(path, name);
    for (auto record = records.begin() + static_cast<std::ptrdiff_t>(first);
         record != records.end(); ++record) {
        record->processName = name;
        record->displayName = displayName;
        record->pid = pid;
        record->user = user;
        record->executablePath = path;
        record->startTime = startTime;
    }
}

} // namespace

PortScanner::PortScanner(const ProcessTables& tables, BindProbe bindProbe, unsigned workers)
    : tables_(tables), bindProbe_(std::move(bindProbe)), workers_(workers) {}

std::vector<OccupiedPort> PortScanner::listOccupiedPorts() const {
    return scanListeningSockets(std::nullopt);
}

std::vector<OccupiedPort>
PortScanner::scanListeningSockets(std::optional<std::int64_t> portFilter) const {
    const auto snapshot = tables_.beginSnapshot(portFilter);
    std::vector<OccupiedPort> result = scanSnapshot(*snapshot, portsThatPass(portFilter));
    const std::vector<AddressFamily> silentFamilies = snapshot->silentFamilies();
    return result.empty() && !silentFamilies.empty()
               ? probePortsByBinding(portFilter, silentFamilies)
               : result;
}

std::vector<OccupiedPort> PortScanner::scanSnapshot(const ProcessSnapshot& snapshot,
                                                    const PortSet& ports) const {
    std::vector<OccupiedPort> result = recordsOfTable(snapshot, ports);
    std::map<std::int64_t, OccupiedPort> owners = walkProcesses(snapshot, ports);
    for (OccupiedPort& record : result) {
        if (auto owner = owners.extract(record.port))
            record = std::move(owner.mapped());
    }
    for (auto& [port, record] : owners)
        result.push_back(std::move(record));
    std::ranges::stable_sort(result, {}, &OccupiedPort::port);
    return result;
}

std::vector<OccupiedPort> PortScanner::readTcpPcbList(const ProcessSnapshot& snapshot,
                                                      std::optional<std::int64_t> portFilter) {
    return recordsOfTable(snapshot, portsThatPass(portFilter));
}

std::vector<ProcessId> PortScanner::listAllPids(const ProcessSnapshot& snapshot) {
    std::vector<ProcessId> pids = snapshot.pids();
    std::erase_if(pids, [](ProcessId pid) { return pid < 2; });
    return pids;
}

// By rule the process walked last owns a port that several share. Walking from the end makes the
// first finding of a port the one that counts, so the walk ends once every port was found.
// Workers take the places in descending order; whatever is not yet taken when the last open port
// is found lies before every finding and can't change it.
std::map<std::int64_t, OccupiedPort> PortScanner::walkProcesses(const ProcessSnapshot& snapshot,
                                                                const PortSet& ports) const {
    std::optional<std::vector<std::uint16_t>> attributable = snapshot.attributablePorts();
    if (attributable)
        std::erase_if(*attributable, [&ports](std::uint16_t port) { return !ports[port]; });
    else if (ports.count() < kPortCount)
        attributable = portsIn(ports);
    const bool canEndEarly = attributable.has_value();
    OpenPorts openPorts(std::move(attributable).value_or(std::vector<std::uint16_t>()));
    if (canEndEarly && openPorts.empty())
        return {};

    const std::vector<ProcessId> pids = listAllPids(snapshot);
    std::atomic<std::size_t> taken{0};
    std::mutex findingsMutex;
    std::vector<Finding> findings;

    const auto work = [&] {
        std::vector<TcpSocket> sockets;
        std::vector<OccupiedPort> records;
        std::vector<Finding> own;
        while (!canEndEarly || !openPorts.empty()) {
            const std::size_t place = taken++;
            if (place >= pids.size())
                break;
            const std::size_t index = pids.size() - 1 - place;
            sockets.clear();
            snapshot.appendTcpSockets(pids[index], sockets);
            appendRecordsOfProcess(snapshot, pids[index], ports, sockets, records);
            for (OccupiedPort& record : records) {
                openPorts.markFound(static_cast<std::uint16_t>(record.port));
                own.push_back({index, std::move(record)});
            }
            records.clear();
        }
        const std::lock_guard lock(findingsMutex);
        std::ranges::move(own, std::back_inserter(findings));
    };
    runOnWorkers(std::min<std::size_t>(workers_, 1 + pids.size() / kProcessesPerWorker), work);

    std::ranges::sort(findings, {}, &Finding::pidIndex);
    std::map<std::int64_t, OccupiedPort> owners;
    for (Finding& finding : findings) {
        const std::int64_t port = finding.record.port;
        owners.insert_or_assign(port, std::move(finding.record));
    }
    return owners;
}

std::vector<OccupiedPort>
PortScanner::probePortsByBinding(std::optional<std::int64_t> portFilter,
                                 const std::vector<AddressFamily>& families) const {
    const auto probe = [this, &families](std::uint16_t port) -> std::optional<OccupiedPort> {
        for (const AddressFamily family : families) {
            if (bindProbe_(port, family))
                return recordWithoutOwner(port, family);
        }
        return std::nullopt;
    };

    std::vector<OccupiedPort> records;
    if (portFilter) {
        if (isValidPort(*portFilter)) {
            if (auto record = probe(static_cast<std::uint16_t>(*portFilter)))
                records.push_back(std::move(*record));
        }
        return records;
    }

    std::atomic<std::size_t> taken{0};
    std::mutex recordsMutex;
    runOnWorkers(std::min<std::size_t>(workers_, 1 + kPortCount / kProbesPerWorker), [&] {
        for (std::size_t place = taken++; place < kPortCount; place = taken++) {
            if (auto record = probe(static_cast<std::uint16_t>(place + 1))) {
                const std::lock_guard lock(recordsMutex);
                records.push_back(std::move(*record));
            }
        }
    });
    std::ranges::sort(records, {}, &OccupiedPort::port);
    return records;
}

} // namespace zenlot
