// The kernel calls of macOS that the inventory needs there, as a table that can be replaced.
//
// Everything above this class is plain computation on bytes and runs on any system. Each operation
// has the name, the arguments and the result of the call that it stands for; only arguments that
// the inventory has no use for (the new value of a sysctl) are left out. What the inventory relies
// on is said at each operation. Ids and results are the kernel's own; nothing here throws.
//
// The operations may be called from several threads at once.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace zenlot {

// The flavours of proc_pidinfo and proc_pidfdinfo, and the sysctl names.
inline constexpr int kProcPidListFds = 1;              // an array of ProcFdInfo
inline constexpr int kProcPidTaskAllInfo = 2;          // one ProcTaskAllInfo
inline constexpr int kProcPidTbsdInfo = 3;             // one ProcBsdInfo
inline constexpr int kProcPidFdSocketInfo = 3;         // one SocketFdInfo
inline constexpr int kAllProcessesName[]{1, 14, 0, 0}; // kern, proc, all; an array of KinfoProc
inline constexpr char kTcpPcbListName[] = "net.inet.tcp.pcblist64";
inline constexpr char kMemorySizeName[] = "hw.memsize"; // one 64-bit number of bytes

class DarwinCalls {
  public:
    DarwinCalls() = default;
    DarwinCalls(const DarwinCalls&) = delete;
    DarwinCalls& operator=(const DarwinCalls&) = delete;
    virtual ~DarwinCalls() = default;

    // The names are those of the system, so that its manual pages apply.
    // NOLINTBEGIN(readability-identifier-naming)

    // Both return 0, or -1 on failure. Without a buffer `length` receives the bytes that are
    // needed; with one it holds the room there is and receives the bytes that were written.
    virtual int sysctlbyname(const char* name, void* buffer, std::size_t* length) const = 0;
    virtual int sysctl(std::span<const int> name, void* buffer, std::size_t* length) const = 0;

    // Writes 32-bit process ids and returns how many, or less than 1 on failure.
    virtual int proc_listallpids(void* buffer, int size) const = 0;

    // Returns the bytes that were written, or less than 1 on failure. kProcPidListFds without a
    // buffer returns the bytes that are needed.
    virtual int proc_pidinfo(int pid, int flavor, std::uint64_t argument, void* buffer,
                             int size) const = 0;

    // Returns the bytes that were written, or less than 1 on failure.
    virtual int proc_pidfdinfo(int pid, int descriptor, int flavor, void* buffer,
                               int size) const = 0;

    // Writes the path of the executable, ended by a zero byte, and returns its length, or less
    // than 1 on failure.
    virtual int proc_pidpath(int pid, void* buffer, std::uint32_t size) const = 0;

    // Writes one MachTimebaseInfo and returns 0 when it could.
    virtual int mach_timebase_info(void* info) const = 0;

    // Returns 0 when the signal was delivered.
    virtual int kill(int pid, int signal) const = 0;

    // NOLINTEND(readability-identifier-naming)
};

} // namespace zenlot
