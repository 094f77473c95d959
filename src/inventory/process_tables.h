// What the port inventory asks of an operating system, in the language of the problem.
//
// A ProcessTables hands out snapshots; a snapshot serves one scan and is thrown away with it.
// Nothing fails loudly: a kernel call that goes wrong makes the answer smaller (an empty list, no
// identity, an empty path). The operations of a snapshot may be called from several threads at
// once, and a snapshot must not outlive the ProcessTables that it came from.
//
//     auto snapshot = tables.beginSnapshot(8080);
//     for (const TcpTableEntry& entry : snapshot->tcpTable()) ...
//
// Ports are in host byte order everywhere.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zenlot {

using ProcessId = std::int32_t;
using UserId = std::uint32_t;

enum class AddressFamily : std::uint8_t { ipv4, ipv6 };

enum class TcpState : std::uint8_t {
    closed,
    listen,
    synSent,
    synReceived,
    established,
    closeWait,
    finWait1,
    closing,
    lastAck,
    finWait2,
    timeWait,
    unknown,
};

// One entry of the kernel's table of TCP sockets. The table names the user that a socket belongs
// to, but no process.
struct TcpTableEntry {
    std::uint16_t localPort{0};
    std::uint16_t foreignPort{0}; // 0 for a socket without a peer
    AddressFamily family{AddressFamily::ipv4};
    UserId ownerUid{0};
    // Tells the socket from every other that a process can hold, also from a later one on the same
    // port; none where the system does not say so.
    std::optional<std::uint64_t> identity{};

    friend bool operator==(const TcpTableEntry&, const TcpTableEntry&) = default;
};

// A TCP socket that a process holds a descriptor of.
struct TcpSocket {
    AddressFamily family{AddressFamily::ipv4};
    TcpState state{TcpState::unknown};
    std::uint16_t localPort{0};
    std::uint16_t foreignPort{0};

    friend bool operator==(const TcpSocket&, const TcpSocket&) = default;
};

class ProcessSnapshot {
  public:
    ProcessSnapshot() = default;
    ProcessSnapshot(const ProcessSnapshot&) = delete;
    ProcessSnapshot& operator=(const ProcessSnapshot&) = delete;
    virtual ~ProcessSnapshot() = default;

    // The kernel's table, in its own order. An implementation may leave out sockets that have a
    // peer and, in a snapshot for one port, sockets on other ports.
    virtual const std::vector<TcpTableEntry>& tcpTable() const = 0;

    // The families whose sockets the kernel did not tell of, so that their absence from tcpTable()
    // means nothing. A family that the kernel doesn't have is not among them: that is an answer.
    virtual std::vector<AddressFamily> silentFamilies() const = 0;

    // The ports for which appendTcpSockets can still report a listening socket, ascending and
    // without duplicates, or none when that is not known beforehand. It lets a walk over the
    // processes end as soon as it can't learn anything new.
    virtual std::optional<std::vector<std::uint16_t>> attributablePorts() const = 0;

    // Every process, in the order of the system's own list.
    virtual std::vector<ProcessId> pids() const = 0;

    // Appends the TCP sockets that the process holds, in the order of its descriptor table. An
    // implementation may leave out what tcpTable() may leave out. Appends nothing for a process
    // that is gone or that the current user may not inspect.
    virtual void appendTcpSockets(ProcessId pid, std::vector<TcpSocket>& sockets) const = 0;

    // When the process started, see ProcessIdentity; none when it is gone or can't be read.
    virtual std::optional<std::int64_t> startTime(ProcessId pid) const = 0;

    // The real user id of the process; none when it is gone or can't be read.
    virtual std::optional<UserId> realUid(ProcessId pid) const = 0;

    // Absolute path of the program that the process runs, as UTF-8 with U+FFFD for what is not;
    // empty when it can't be read.
    virtual std::string executablePath(ProcessId pid) const = 0;
};

class ProcessTables {
  public:
    ProcessTables() = default;
    ProcessTables(const ProcessTables&) = delete;
    ProcessTables& operator=(const ProcessTables&) = delete;
    virtual ~ProcessTables() = default;

    // Takes what must be taken at once. `port` narrows the snapshot to the sockets of one port;
    // a port outside 1 to 65535 gives a snapshot without sockets.
    virtual std::unique_ptr<ProcessSnapshot>
    beginSnapshot(std::optional<std::int64_t> port) const = 0;
};

// The real user id that this program runs as.
UserId currentUserId();

} // namespace zenlot
