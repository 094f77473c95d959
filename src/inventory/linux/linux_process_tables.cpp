#include "inventory/linux/linux_process_tables.h"

#include "inventory/linux/socket_index.h"
#include "inventory/linux/tcp_socket_table.h"
#include "inventory/occupied_port.h"
#include "inventory/process_names.h"

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

class LinuxProcessSnapshot final : public ProcessSnapshot {
  public:
    LinuxProcessSnapshot(const ProcFiles& procFiles, const TcpSocketTable& table)
        : procFiles_(procFiles), index_(table.sockets), silentFamilies_(table.silentFamilies) {
        table_.reserve(table.sockets.size());
        for (const KernelTcpSocket& socket : table.sockets) {
            table_.push_back({socket.socket.localPort, socket.socket.foreignPort,
                              socket.socket.family, socket.ownerUid, socket.inode});
            if (socket.inode != 0)
                attributablePorts_.push_back(socket.socket.localPort);
        }
        std::ranges::sort(attributablePorts_);
        attributablePorts_.erase(std::unique(attributablePorts_.begin(), attributablePorts_.end()),
                                 attributablePorts_.end());
    }

    const std::vector<TcpTableEntry>& tcpTable() const override { return table_; }

    std::vector<AddressFamily> silentFamilies() const override { return silentFamilies_; }

    std::optional<std::vector<std::uint16_t>> attributablePorts() const override {
        return attributablePorts_;
    }

    std::vector<ProcessId> pids() const override { return procFiles_.pids(); }

    void appendTcpSockets(ProcessId pid, std::vector<TcpSocket>& sockets) const override {
        procFiles_.forEachSocketInode(pid, [&](std::uint64_t inode) {
            if (const TcpSocket* socket = index_.find(inode))
                sockets.push_back(*socket);
        });
    }

    std::optional<std::int64_t> startTime(ProcessId pid) const override {
        const auto stat = procFiles_.stat(pid);
        return stat ? std::optional(stat->startTicks) : std::nullopt;
    }

    std::optional<UserId> realUid(ProcessId pid) const override {
        const auto status = procFiles_.status(pid);
        return status ? std::optional(status->realUid) : std::nullopt;
    }

    std::string executablePath(ProcessId pid) const override {
        return sanitizedUtf8(procFiles_.executablePath(pid));
    }

  private:
    const ProcFiles& procFiles_;
    SocketIndex index_;
    std::vector<AddressFamily> silentFamilies_;
    std::vector<TcpTableEntry> table_;
    std::vector<std::uint16_t> attributablePorts_;
};

} // namespace

LinuxProcessTables::LinuxProcessTables(const std::string& procRoot,
                                       std::unique_ptr<NetlinkTransport> transport)
    : procFiles_(procRoot), transport_(std::move(transport)) {}

std::unique_ptr<ProcessSnapshot>
LinuxProcessTables::beginSnapshot(std::optional<std::int64_t> port) const {
    TcpSocketTable table;
    if (!port)
        table = readTcpSockets(procFiles_, *transport_, SocketScope::listening, std::nullopt);
    else if (isValidPort(*port))
        table = readTcpSockets(procFiles_, *transport_, SocketScope::listening,
                               static_cast<std::uint16_t>(*port));
    return std::make_unique<LinuxProcessSnapshot>(procFiles_, table);
}

} // namespace zenlot
