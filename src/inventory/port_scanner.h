// Finds every TCP port that is listened on, and its owner where the kernel lets us see it.
//
// Two sources are combined: the kernel's table of TCP sockets, which knows every socket but no
// process, and a walk over the processes and their descriptors, which knows the owners but only of
// processes that the current user may inspect. What the kernel answers stands, also when nothing
// listens: a port that can't be bound may be that of a connection, alive or just ended. Only where
// the table can't be read, and the walk finds nothing, are ports probed by binding.
//
// A scan never fails; what can't be read is missing from its result. It holds no state, may run
// several times at once, and takes from milliseconds to a tenth of a second: keep it off the
// thread that draws.
//
//     PortScanner scanner(tables);
//     std::vector<OccupiedPort> ports = scanner.listOccupiedPorts();
#pragma once

#include "inventory/bind_probe.h"
#include "inventory/occupied_port.h"
#include "inventory/process_tables.h"

#include <bitset>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace zenlot {

// A bit for every port number; that of 0 stays clear, since nobody can listen there.
using PortSet = std::bitset<65536>;

class PortScanner {
  public:
    // `tables` must outlive the scanner. `workers` bounds the threads of one walk or probe: more
    // than there are processors to use only cost.
    explicit PortScanner(const ProcessTables& tables, BindProbe bindProbe = isPortInUse,
                         unsigned workers = 1);

    // Every listening port, in ascending order.
    std::vector<OccupiedPort> listOccupiedPorts() const;

    // The same for one port, or for all when there is no filter. A filter outside 1 to 65535
    // finds nothing.
    std::vector<OccupiedPort> scanListeningSockets(std::optional<std::int64_t> portFilter) const;

    // The same for some ports of a snapshot, but without probing.
    // The fewer ports, the sooner the walk over the processes may end.
    std::vector<OccupiedPort> scanSnapshot(const ProcessSnapshot& snapshot,
                                           const PortSet& ports) const;

    // The kernel's table alone: one record without an owner for each port, in ascending order.
    static std::vector<OccupiedPort> readTcpPcbList(const ProcessSnapshot& snapshot,
                                                    std::optional<std::int64_t> portFilter);

    // The processes to walk: all but the kernel (0) and the init process (1).
    static std::vector<ProcessId> listAllPids(const ProcessSnapshot& snapshot);

    // Records without an owner for the ports that can't be bound in one of the families, in
    // ascending order. The first of the families that is refused gives its name.
    std::vector<OccupiedPort> probePortsByBinding(std::optional<std::int64_t> portFilter,
                                                  const std::vector<AddressFamily>& families = {
                                                      AddressFamily::ipv4,
                                                      AddressFamily::ipv6}) const;

    const ProcessTables& tables() const { return tables_; }

  private:
    std::map<std::int64_t, OccupiedPort> walkProcesses(const ProcessSnapshot& snapshot,
                                                       const PortSet& ports) const;

    const ProcessTables& tables_;
    BindProbe bindProbe_;
    unsigned workers_;
};

} // namespace zenlot
