#include "inventory/linux/linux_process_tables.h"

#include "inventory/linux/proc_net_tcp.h"
#include "inventory/linux/sock_diag.h"
#include "inventory/linux/socket_index.h"
#include "inventory/occupied_port.h"
#include "inventory/process_identity.h"

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

class LinuxProcessSnapshot final : public ProcessSnapshot {
  public:
    LinuxProcessSnapshot(const ProcFiles& procFiles, const std::vector<KernelTcpSocket>& sockets)
        : procFiles_(procFiles), index_(sockets) {
        table_.reserve(sockets.size());
        for (const KernelTcpSocket& socket : sockets) {
            table_.push_back({socket.socket.localPort, socket.socket.foreignPort,
                              socket.socket.family, socket.ownerUid});
            if (socket.inode != 0)
                attributablePorts_.push_back(socket.socket.localPort);
        }
        std::ranges::sort(attributablePorts_);
        attributablePorts_.erase(std::unique(attributablePorts_.begin(), attributablePorts_.end()),
                                 attributablePorts_.end());
    }

    const std::vector<TcpTableEntry>& tcpTable() const override { return table_; }

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
    std::vector<TcpTableEntry> table_;
    std::vector<std::uint16_t> attributablePorts_;
};

std::vector<KernelTcpSocket> listeningSockets(const ProcFiles& procFiles,
                                              NetlinkTransport& transport,
                                              std::optional<std::uint16_t> port) {
    struct Source {
        AddressFamily family;
        const char* file;
    };
    std::vector<KernelTcpSocket> all;
    for (const Source& source :
         {Source{AddressFamily::ipv4, "net/tcp"}, Source{AddressFamily::ipv6, "net/tcp6"}}) {
        if (auto sockets = dumpListeningSockets(transport, source.family, port)) {
            std::ranges::move(*sockets, std::back_inserter(all));
        } else if (const auto text = procFiles.read(source.file)) {
            decodeProcNetTcp(*text, source.family, all);
        }
    }
    if (port)
        std::erase_if(all, [port](const KernelTcpSocket& socket) {
            return socket.socket.localPort != *port;
        });
    return all;
}

} // namespace

LinuxProcessTables::LinuxProcessTables(const std::string& procRoot,
                                       std::unique_ptr<NetlinkTransport> transport)
    : procFiles_(procRoot), transport_(std::move(transport)) {}

std::unique_ptr<ProcessSnapshot>
LinuxProcessTables::beginSnapshot(std::optional<std::int64_t> port) const {
    std::vector<KernelTcpSocket> sockets;
    if (!port)
        sockets = listeningSockets(procFiles_, *transport_, std::nullopt);
    else if (isValidPort(*port))
        sockets = listeningSockets(procFiles_, *transport_, static_cast<std::uint16_t>(*port));
    return std::make_unique<LinuxProcessSnapshot>(procFiles_, sockets);
}

} // namespace zenlot
