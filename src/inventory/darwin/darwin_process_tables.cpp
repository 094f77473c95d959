#include "inventory/darwin/darwin_process_tables.h"

#include "inventory/darwin/kernel_records.h"
#include "inventory/darwin/process_owner_query.h"
#include "inventory/darwin/process_queries.h"
#include "inventory/darwin/process_records.h"
#include "inventory/darwin/tcp_pcb_list.h"

#include <algorithm>
#include <utility>

namespace zenlot {

namespace {

// A system with more processes loses those beyond; their ports still stand in the TCP table.
constexpr int kMaximumPids = 8192;

// A TCP table of one head, or of less, has no entries.
constexpr std::size_t kMinimumTcpTableSize = 25;

// Asks for the size of a table, then for the table, and returns the bytes that the kernel wrote;
// empty when one of the two calls fails or the table is smaller than `minimumSize`. The buffer
// holds whole records only. What changes in between is the kernel's business: a table that has
// grown fails the second call, one that has shrunk gives fewer bytes.
template <typename Call>
std::vector<std::byte> readTable(const Call& call, std::size_t minimumSize,
                                 std::size_t recordSize) {
    std::size_t size = 0;
    if (call(nullptr, &size) != 0 || size < minimumSize)
        return {};
    std::vector<std::byte> table(size - size % recordSize);
    std::size_t written = table.size();
    if (call(table.data(), &written) != 0)
        return {};
    table.resize(std::min(written, table.size()));
    return table;
}

class DarwinProcessSnapshot final : public ProcessSnapshot {
  public:
    DarwinProcessSnapshot(const DarwinCalls& calls, std::optional<std::int64_t> port,
                          UserId currentUser)
        : calls_(calls), port_(port), hasSockets_(!port || (*port >= 1 && *port <= 65535)) {
        if (!hasSockets_)
            return;
        const auto call = [&calls](void* buffer, std::size_t* length) {
            return calls.sysctlbyname(kTcpPcbListName, buffer, length);
        };
        auto table = decodeTcpPcbList(readTable(call, kMinimumTcpTableSize, 1), currentUser);
        isSilent_ = !table;
        tcpTable_ = std::move(table).value_or(std::vector<TcpTableEntry>());
        std::erase_if(tcpTable_,
                      [this](const TcpTableEntry& entry) { return !matches(entry.localPort); });
    }

    const std::vector<TcpTableEntry>& tcpTable() const override { return tcpTable_; }

    // Both families are in one table.
    std::vector<AddressFamily> silentFamilies() const override {
        if (!isSilent_)
            return {};
        return {AddressFamily::ipv4, AddressFamily::ipv6};
    }

    std::optional<std::vector<std::uint16_t>> attributablePorts() const override {
        return std::nullopt;
    }

    std::vector<ProcessId> pids() const override {
        std::vector<ProcessId> pids(kMaximumPids);
        const int count =
            calls_.proc_listallpids(pids.data(), static_cast<int>(pids.size() * sizeof(ProcessId)));
        if (count >= 1) {
            pids.resize(static_cast<std::size_t>(std::min(count, kMaximumPids)));
            return pids;
        }
        const auto call = [this](void* buffer, std::size_t* length) {
            return calls_.sysctl(kAllProcessesName, buffer, length);
        };
        return decodeProcessIds(readTable(call, sizeof(KinfoProc), sizeof(KinfoProc)));
    }

    void appendTcpSockets(ProcessId pid, std::vector<TcpSocket>& sockets) const override {
        if (!hasSockets_)
            return;
        for (const TcpSocket& socket :
             queryTcpSockets(calls_, pid, queryDescriptors(calls_, pid))) {
            if (matches(socket.localPort))
                sockets.push_back(socket);
        }
    }

    std::optional<std::int64_t> startTime(ProcessId pid) const override {
        const std::optional<ProcessOwner> owner = queryProcessOwner(calls_, pid);
        return owner ? std::optional(owner->startTime.count()) : std::nullopt;
    }

    std::optional<UserId> realUid(ProcessId pid) const override {
        const std::optional<ProcessOwner> owner = queryProcessOwner(calls_, pid);
        return owner ? std::optional(owner->realUid) : std::nullopt;
    }

    std::string executablePath(ProcessId pid) const override {
        return queryExecutablePath(calls_, pid);
    }

  private:
    bool matches(std::uint16_t port) const { return !port_ || *port_ == port; }

    const DarwinCalls& calls_;
    std::optional<std::int64_t> port_;
    bool hasSockets_; // false for a port that no socket can have
    std::vector<TcpTableEntry> tcpTable_;
    bool isSilent_{false}; // the table could not be read
};

} // namespace

DarwinProcessTables::DarwinProcessTables(const DarwinCalls& calls, UserId currentUser)
    : calls_(calls), currentUser_(currentUser) {}

std::unique_ptr<ProcessSnapshot>
DarwinProcessTables::beginSnapshot(std::optional<std::int64_t> port) const {
    return std::make_unique<DarwinProcessSnapshot>(calls_, port, currentUser_);
}

} // namespace zenlot
