// Decodes what the kernel says about processes and their descriptors. Each function takes the bytes
// that a call has written; a record that is not complete is left out.
#pragma once

#include "inventory/process_inspector.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace zenlot {

// The two users that a process has at a time, and when it started, since the beginning of 1970.
struct ProcessOwner {
    UserId effectiveUid{0};
    UserId realUid{0};
    std::chrono::microseconds startTime{0};
};

// The descriptors that are sockets of any kind, from an array of ProcFdInfo, in its order.
std::vector<std::int32_t> decodeSocketDescriptors(std::span<const std::byte> descriptors);

// The TCP socket of a SocketFdInfo; none when the size is not exactly that of the record or the
// socket is not a TCP socket.
std::optional<TcpSocket> decodeTcpSocket(std::span<const std::byte> socket);

// The owner out of a ProcBsdInfo; none when it is not complete.
std::optional<ProcessOwner> decodeProcessOwner(std::span<const std::byte> process);

// What a ProcTaskAllInfo says of a process, but for its CPU time, which is in units that only the
// machine knows; none when it is not complete.
std::optional<TaskInfo> decodeTaskInfo(std::span<const std::byte> process);

// The time that a process has had on a processor, out of a ProcTaskAllInfo and a MachTimebaseInfo;
// none when either is not complete or makes no sense.
std::optional<std::chrono::milliseconds> decodeCpuTime(std::span<const std::byte> process,
                                                       std::span<const std::byte> timebase);

// The process ids of an array of KinfoProc, in its order.
std::vector<ProcessId> decodeProcessIds(std::span<const std::byte> processes);

} // namespace zenlot
