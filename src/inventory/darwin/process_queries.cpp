#include "inventory/darwin/process_queries.h"

#include "inventory/darwin/kernel_records.h"
#include "inventory/darwin/process_records.h"
#include "inventory/process_names.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace zenlot {

namespace {

constexpr std::size_t kPathBufferSize = 4096;

} // namespace

std::vector<std::byte> queryDescriptors(const DarwinCalls& calls, ProcessId pid) {
    const int needed = calls.proc_pidinfo(pid, kProcPidListFds, 0, nullptr, 0);
    if (needed < static_cast<int>(sizeof(ProcFdInfo)))
        return {};
    const auto size = static_cast<std::size_t>(needed);
    std::vector<std::byte> list(size - size % sizeof(ProcFdInfo));
    const int result =
        calls.proc_pidinfo(pid, kProcPidListFds, 0, list.data(), static_cast<int>(list.size()));
    const auto written = std::min(list.size(), static_cast<std::size_t>(std::max(result, 0)));
    list.resize(written - written % sizeof(ProcFdInfo));
    return list;
}

std::vector<TcpSocket> queryTcpSockets(const DarwinCalls& calls, ProcessId pid,
                                       std::span<const std::byte> descriptors) {
    std::vector<TcpSocket> sockets;
    for (const std::int32_t descriptor : decodeSocketDescriptors(descriptors)) {
        std::array<std::byte, sizeof(SocketFdInfo)> info{};
        const int written = calls.proc_pidfdinfo(pid, descriptor, kProcPidFdSocketInfo, info.data(),
                                                 static_cast<int>(info.size()));
        if (std::cmp_not_equal(written, info.size()))
            continue;
        if (const std::optional<TcpSocket> socket = decodeTcpSocket(info))
            sockets.push_back(*socket);
    }
    return sockets;
}

std::string queryExecutablePath(const DarwinCalls& calls, ProcessId pid) {
    std::array<char, kPathBufferSize> path{};
    if (calls.proc_pidpath(pid, path.data(), static_cast<std::uint32_t>(path.size())) < 1)
        return {};
    // The length that the call returns is not needed: the path ends at the first zero byte, or with
    // the buffer.
    const auto end = std::find(path.begin(), path.end(), '\0');
    return sanitizedUtf8(std::string_view(path.begin(), end));
}

} // namespace zenlot
