#include "inventory/darwin/process_records.h"

#include "inventory/darwin/kernel_records.h"
#include "inventory/darwin/load.h"

#include <arpa/inet.h>

#include <iterator>

namespace zenlot {

namespace {

constexpr TcpState kStatesByNumber[]{
    TcpState::closed,      TcpState::listen,    TcpState::synSent,  TcpState::synReceived,
    TcpState::established, TcpState::closeWait, TcpState::finWait1, TcpState::closing,
    TcpState::lastAck,     TcpState::finWait2,  TcpState::timeWait,
};

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
    return ProcessOwner{.effectiveUid = info.pbi_uid, .realUid = info.pbi_ruid};
}

std::vector<ProcessId> decodeProcessIds(std::span<const std::byte> processes) {
    std::vector<ProcessId> pids;
    pids.reserve(processes.size() / sizeof(KinfoProc));
    for (; processes.size() >= sizeof(KinfoProc); processes = processes.subspan(sizeof(KinfoProc)))
        pids.push_back(loadAt<KinfoProc>(processes).kp_proc.p_pid);
    return pids;
}

} // namespace zenlot
