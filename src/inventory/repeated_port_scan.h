// Lists the listening ports over and over, for those who poll: what PortScanner would list, but
// only those ports are looked up again about which it could now find something else. As long as
// there are none, the list of before is handed out again, the very same object.
//
// A port is looked up again when
//
//   - other sockets listen on it than before,
//   - the process that owned it has ended,
//   - a young process owns it, or holds a socket that listens on it, or
//   - the last look at all of the ports is longer ago than the caller wants to reuse it.
//
// A process is young until it has been known for kSettlingTime and was looked at once more after
// that. Right after its start it may hold what it is about to drop, or not yet what it is about to
// be given.
//
// What goes unseen by that is bounded by the look at all ports: a listening socket that a process
// drops, or gets from another one, long after both have started, and a process that takes another
// user or another program in place. It changes names and pids. For people who may not inspect the
// processes of others it does not change which ports are theirs, save for sockets that somebody
// else has opened.
//
// Nothing is probed by binding; a poll says of which families the kernel was silent. Where the
// system does not tell sockets apart, every port is looked up every time.
//
// May be used by several threads at once; they wait for each other, and a scan that had to wait
// begins after that. Without a change it costs the table of sockets and the list of processes. The
// owners of new ports are found quickly, since the walk begins with the newest processes.
//
//     RepeatedPortScan scan(scanner);
//     const SharedPorts ports = scan.listOccupiedPorts(); // and again a few seconds later
#pragma once

#include "inventory/occupied_port.h"
#include "inventory/port_scanner.h"
#include "inventory/process_tables.h"

#include <chrono>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace zenlot {

// What one poll has found.
struct PolledPorts {
    SharedPorts ports;                         // in ascending order; never null
    std::vector<AddressFamily> silentFamilies; // see ProcessSnapshot
};

class RepeatedPortScan {
  public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    // On a busy machine a look at all ports costs as much as fifty scans without a change.
    static constexpr std::chrono::seconds kLongestReuse{120};
    static constexpr std::chrono::seconds kSettlingTime{2};

    // `scanner` must outlive the object.
    explicit RepeatedPortScan(const PortScanner& scanner,
                              Clock clock = std::chrono::steady_clock::now,
                              std::chrono::seconds longestReuse = kLongestReuse);

    PolledPorts poll();

    // The ports alone.
    SharedPorts listOccupiedPorts() { return poll().ports; }

    // The list of last time without the ports that nobody listens on any more. Costs the table of
    // sockets: no process is looked at, and new listeners have to wait for the next scan.
    SharedPorts dropClosedPorts();

  private:
    using Time = std::chrono::steady_clock::time_point;
    using Table = std::vector<TcpTableEntry>;

    void noteProcesses(std::vector<ProcessId> pids, Time now);
    PortSet portsToLookUp(const ProcessSnapshot& snapshot, const Table& table) const;
    SharedPorts lookUp(const ProcessSnapshot& snapshot, const PortSet& ports) const;

    const PortScanner& scanner_;
    Clock clock_;
    std::chrono::seconds longestReuse_;

    std::mutex mutex_;                 // for all that follows
    Table table_;                      // of the last scan, in ascending order of port
    std::vector<ProcessId> processes_; // of the last scan, ascending
    std::map<ProcessId, Time> young_;  // since when they are known
    SharedPorts ports_;
    std::optional<Time> allLookedUpAt_;
};

} // namespace zenlot
