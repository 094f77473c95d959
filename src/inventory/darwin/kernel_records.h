// The records that the macOS kernel fills in, byte for byte as a 64-bit process gets them.
//
// A field that is read has the kernel's name; stretches that nobody reads are arrays of bytes whose
// comment adds up what lies in them. All padding is spelled out, so the layout is the same for
// every compiler, and the assertions below hold the sizes that the kernel insists on. Integers are
// in the byte order of the machine.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zenlot {

inline constexpr std::uint32_t kFdTypeSocket = 2;
inline constexpr std::int32_t kSocketKindTcp = 2;
inline constexpr std::uint32_t kAddressFamilyIpv6 = 30;

// One open descriptor of a process.
struct ProcFdInfo {
    std::int32_t proc_fd;
    std::uint32_t proc_fdtype;
};
static_assert(sizeof(ProcFdInfo) == 8);

// What all internet sockets have in common. A port is a 16-bit number in network byte order that
// the kernel stores into an int, so it lies in the low half.
struct InSockInfo {
    std::int32_t insi_fport;
    std::int32_t insi_lport;
    // Generation count 8, flags 4, flow label 4, IP versions 1, time to live 1, padding 2,
    // reserved 4.
    std::array<std::byte, 24> generationToReserved;
    std::array<std::byte, 16> foreignAddress; // an IPv4 address takes the last 4
    std::array<std::byte, 16> localAddress;
    // IPv4 type of service 1, padding 3; IPv6 hop limit 1, padding 3, checksum offset 4, interface
    // index 2, hop count 2.
    std::array<std::byte, 16> versionSpecific;
};
static_assert(sizeof(InSockInfo) == 80);

struct TcpSockInfo {
    InSockInfo tcpsi_ini;
    std::int32_t tcpsi_state;
    // Four timers of 4, maximum segment size 4, flags 4, reserved 4, kernel address 8.
    std::array<std::byte, 36> timersToControlBlock;
};
static_assert(sizeof(TcpSockInfo) == 120);

struct SocketInfo {
    // The answer of stat(): device 4, mode 2, links 2, inode 8, user 4, group 4, four times as
    // seconds 8 and nanoseconds 8, size 8, blocks 8, block size 4, flags 4, generation 4, device
    // type 4, spare 16.
    std::array<std::byte, 136> fileStatus;
    // Kernel addresses of the socket 8 and its control block 8, type 4, protocol 4.
    std::array<std::byte, 24> addressesToProtocol;
    std::int32_t soi_family;
    // Options, linger, state, three queue lengths, timeout and error of 2 each, out-of-band mark 4.
    std::array<std::byte, 20> optionsToOutOfBandMark;
    // Receive and send buffer: five counters of 4, flags 2 and timeout 2 each.
    std::array<std::byte, 48> buffers;
    std::int32_t soi_kind; // which member of the union below is in use
    std::array<std::byte, 4> reserved;
    // A union whose largest member, the one for local-domain sockets, has two kernel addresses of 8
    // and two socket addresses of 255, rounded up to 528. Nobody needs another member than this.
    TcpSockInfo pri_tcp;
    std::array<std::byte, 528 - sizeof(TcpSockInfo)> restOfUnion;
};
static_assert(sizeof(SocketInfo) == 768);

// One socket descriptor of a process.
struct SocketFdInfo {
    // Open flags 4, status 4, file offset 8, type 4, guard flags 4.
    std::array<std::byte, 24> fileInfo;
    SocketInfo psi;
};
static_assert(sizeof(SocketFdInfo) == 792);
static_assert(offsetof(SocketFdInfo, psi.soi_family) == 24 + 136 + 24);
static_assert(offsetof(SocketFdInfo, psi.soi_kind) == 184 + 4 + 20 + 48);
static_assert(offsetof(SocketFdInfo, psi.pri_tcp) == 256 + 8);
static_assert(offsetof(SocketFdInfo, psi.pri_tcp.tcpsi_state) == 264 + 80);

// Identity of a process.
struct ProcBsdInfo {
    std::array<std::byte, 4> flags;
    std::uint32_t pbi_status;
    std::array<std::byte, 8> exitStatusAndPid;
    std::uint32_t pbi_ppid;
    std::uint32_t pbi_uid; // effective user
    std::array<std::byte, 4> effectiveGroup;
    std::uint32_t pbi_ruid; // real user
    // Real group, saved user, saved group, reserved, 4 each.
    std::array<std::byte, 16> realGroupToReserved;
    std::array<std::byte, 48> names; // short name 16, long name 32
    // Descriptors, process group, job control count, terminal device, terminal's process group,
    // nice value, 4 each.
    std::array<std::byte, 24> filesToNice;
    std::uint64_t pbi_start_tvsec; // since 1970
    std::uint64_t pbi_start_tvusec;
};
static_assert(sizeof(ProcBsdInfo) == 136);
static_assert(offsetof(ProcBsdInfo, pbi_ppid) == 16);
static_assert(offsetof(ProcBsdInfo, pbi_uid) == 20 && offsetof(ProcBsdInfo, pbi_ruid) == 28);
static_assert(offsetof(ProcBsdInfo, pbi_start_tvsec) == 120);

// Resources of a process. The CPU times are in units of the machine's own clock.
struct ProcTaskInfo {
    std::uint64_t pti_virtual_size; // in bytes, as the next one
    std::uint64_t pti_resident_size;
    std::uint64_t pti_total_user;
    std::uint64_t pti_total_system;
    // Times of the threads that exist 2 times 8; policy, faults, page-ins, copy-on-write faults,
    // messages sent and received, two kinds of system calls, context switches, threads, running
    // threads, priority, 4 each.
    std::array<std::byte, 64> threadTimesToPriority;
};
static_assert(sizeof(ProcTaskInfo) == 96);

struct ProcTaskAllInfo {
    ProcBsdInfo pbsd;
    ProcTaskInfo ptinfo;
};
static_assert(sizeof(ProcTaskAllInfo) == 232);

// How long a unit of the machine's clock is: numer / denom nanoseconds.
struct MachTimebaseInfo {
    std::uint32_t numer;
    std::uint32_t denom;
};
static_assert(sizeof(MachTimebaseInfo) == 8);

// One process in the older table of all processes.
struct ExternProc {
    // Start time 16, two kernel addresses of 8, flags 4, state 1, padding 3.
    std::array<std::byte, 40> startTimeToState;
    std::int32_t p_pid;
    // Everything after it, up to the kernel address of the resource usage at 288.
    std::array<std::byte, 252> rest;
};
static_assert(sizeof(ExternProc) == 296);

struct KinfoProc {
    ExternProc kp_proc;
    std::array<std::byte, 352> kp_eproc; // credentials, memory, session, terminal, login name
};
static_assert(sizeof(KinfoProc) == 648);
static_assert(offsetof(KinfoProc, kp_proc.p_pid) == 40);

} // namespace zenlot
