#include "inventory/darwin/process_records.h"

#include "inventory/darwin/kernel_records.h"
#include "posix/load.h"

#include <arpa/inet.h>

#include <algorithm>
#include <iterator>

namespace zenlot {

namespace {

constexpr TcpState kStatesByNumber[]{
    TcpState::closed,      TcpState::listen,    TcpState::synSent,  TcpState::synReceived,
    TcpState::established, TcpState::closeWait, TcpState::finWait1, TcpState::closing,
    TcpState::lastAck,     TcpState::finWait2,  TcpState::timeWait,
};

ProcessState processStateFromNumber(std::uint32_t number) {
    switch (number) {
    case 1:
        return ProcessState::beingCreated;
    case 2:
        return ProcessState::runnable;
    case 3:
        return ProcessState::sleeping;
    case 4:
        return ProcessState::stopped;
    case 5:
        return ProcessState::zombie;
    default:
        return ProcessState::unknown;
    }
}

TcpState stateFromNumber(std::int32_t number) {
    // A negative number becomes one that is far too large.
    const auto index = static_cast<std::uint32_t>(number);
    return index < std::size(kStatesByNumber) ? kStatesByNumber[index] : TcpState::unknown;
}

// What lies in the high half is not part of the port.
std::uint16_t portFromField(std::int32_t field) {
    return ntohs(static_cast<std::uint16_t>(field));
}

} // namespace

std::vector<std::int32_t> decodeSocketDescriptors(std::span<const std::byte> descriptors) {
    std::vector<std::int32_t> sockets;
    for (; descriptors.size() >= sizeof(ProcFdInfo);
         descriptors = descriptors.subspan(sizeof(ProcFdInfo))) {
        const auto descriptor = loadAt<ProcFdInfo>(descriptors);
        if (descriptor.proc_fdtype == kFdTypeSocket)
            sockets.push_back(descriptor.proc_fd);
    }
    return sockets;
}

std::optional<TcpSocket> decodeTcpSocket(std::span<const std::byte> socket) {
    if (socket.size() != sizeof(SocketFdInfo))
        return std::nullopt;
    const SocketInfo info = loadAt<SocketFdInfo>(socket).psi;
    if (info.soi_kind != kSocketKindTcp)
        return std::nullopt;
    TcpSocket tcp;
    if (static_cast<std::uint32_t>(info.soi_family) == kAddressFamilyIpv6)
        tcp.family = AddressFamily::ipv6;
    tcp.state = stateFromNumber(info.pri_tcp.tcpsi_state);
    tcp.localPort = portFromField(info.pri_tcp.tcpsi_ini.insi_lport);
    tcp.foreignPort = portFromField(info.pri_tcp.tcpsi_ini.insi_fport);
    return tcp;
}

std::optional<ProcessOwner> decodeProcessOwner(std::span<const std::byte> process) {
    if (process.size() < sizeof(ProcBsdInfo))
        return std::nullopt;
    const auto info = loadAt<ProcBsdInfo>(process);
    constexpr std::uint64_t kLatest = std::chrono::seconds(std::chrono::years(10'000)).count();
    constexpr std::uint64_t kMicroseconds = 1'000'000;
    return ProcessOwner{
        .effectiveUid = info.pbi_uid,
        .realUid = info.pbi_ruid,
        .startTime = std::chrono::seconds(std::min(info.pbi_start_tvsec, kLatest)) +
                     std::chrono::microseconds(std::min(info.pbi_start_tvusec, kMicroseconds))};
}

std::optional<TaskInfo> decodeTaskInfo(std::span<const std::byte> process) {
    if (process.size() < sizeof(ProcTaskAllInfo))
        return std::nullopt;
    const auto info = loadAt<ProcTaskAllInfo>(process);
    TaskInfo task;
    task.parentPid = static_cast<ProcessId>(info.pbsd.pbi_ppid);
    task.state = processStateFromNumber(info.pbsd.pbi_status);
    constexpr std::uint64_t kLatest = std::chrono::seconds::max().count();
    task.startTime = std::chrono::seconds(std::min(info.pbsd.pbi_start_tvsec, kLatest));
    task.virtualBytes = info.ptinfo.pti_virtual_size;
    task.residentBytes = info.ptinfo.pti_resident_size;
    return task;
}

std::optional<std::chrono::milliseconds> decodeCpuTime(std::span<const std::byte> process,
                                                       std::span<const std::byte> timebase) {
    if (process.size() < sizeof(ProcTaskAllInfo) || timebase.size() < sizeof(MachTimebaseInfo))
        return std::nullopt;
    const auto unit = loadAt<MachTimebaseInfo>(timebase);
    if (unit.numer == 0 || unit.denom == 0)
        return std::nullopt;
    const ProcTaskInfo info = loadAt<ProcTaskAllInfo>(process).ptinfo;
    // In floating point, as whole units of some machines would overflow on their way.
    const double units =
        static_cast<double>(info.pti_total_user) + static_cast<double>(info.pti_total_system);
    const double milliseconds = units * unit.numer / unit.denom / 1e6;
    constexpr double kMost = 1e15; // some ten thousand years
    return std::chrono::milliseconds(static_cast<std::int64_t>(std::min(milliseconds, kMost)));
}

std::vector<ProcessId> decodeProcessIds(std::span<const std::byte> processes) {
    std::vector<ProcessId> pids;
    pids.reserve(processes.size() / sizeof(KinfoProc));
    for (; processes.size() >= sizeof(KinfoProc); processes = processes.subspan(sizeof(KinfoProc)))
        pids.push_back(loadAt<KinfoProc>(processes).kp_proc.p_pid);
    return pids;
}

} // namespace zenlot
