// What the computing parts of the inventory cost, on tables of 1,200 listening sockets. Nothing
// here asks the kernel for anything: the tables are made up, byte for byte as a kernel writes them.
#include "inventory/darwin/tcp_pcb_list.h"
#include "inventory/linux/proc_net_tcp.h"
#include "inventory/linux/sock_diag.h"
#include "inventory/linux/socket_index.h"
#include "inventory/occupied_ports_json.h"
#include "inventory/port_merge.h"
#include "inventory/port_scanner.h"
#include "inventory/process_names.h"
#include "inventory/process_tables.h"

#include <benchmark/benchmark.h>

#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <netinet/tcp.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <memory>
#include <numeric>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zenlot {
namespace {

constexpr int kSockets = 1'200;
constexpr int kProcesses = 600;

// Scattered as ports that a kernel hands out are, and all different.
std::uint16_t portOf(int index) {
    return static_cast<std::uint16_t>(20'000 + index * 7'919 % 40'009);
}

std::uint64_t inodeOf(int index) {
    return 1'000'000 + static_cast<std::uint64_t>(index) * 3;
}

template <typename Value>
void append(std::vector<std::byte>& bytes, const Value& value) {
    const auto raw = std::as_bytes(std::span(&value, 1));
    bytes.insert(bytes.end(), raw.begin(), raw.end());
}

void expect(benchmark::State& state, bool isRight) {
    if (!isRight)
        state.SkipWithError("the result is wrong");
}

void countSockets(benchmark::State& state, std::size_t bytes) {
    state.SetItemsProcessed(state.iterations() * kSockets);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

// ---- decoders of Linux -------------------------------------------------------------------------

// The datagrams of a dump, as full as the kernel makes them.
std::vector<std::vector<std::byte>> sockDiagDump() {
    // The kernel adds attributes that nobody asked for: shutdown, cgroup, socket options.
    constexpr std::size_t attributeBytes = 28;
    constexpr std::size_t datagramBytes = 32'768;
    constexpr std::size_t messageBytes = NLMSG_LENGTH(sizeof(inet_diag_msg)) + attributeBytes;

    std::vector<std::vector<std::byte>> datagrams(1);
    for (int index = 0; index < kSockets; ++index) {
        if (datagrams.back().size() + messageBytes > datagramBytes)
            datagrams.emplace_back();
        nlmsghdr header{};
        header.nlmsg_len = messageBytes;
        header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
        header.nlmsg_flags = NLM_F_MULTI;
        inet_diag_msg message{};
        message.idiag_family = AF_INET;
        message.idiag_state = TCP_LISTEN;
        message.id.idiag_sport = htons(portOf(index));
        message.idiag_uid = 1'000;
        message.idiag_inode = static_cast<std::uint32_t>(inodeOf(index));
        append(datagrams.back(), header);
        append(datagrams.back(), message);
        append(datagrams.back(), std::array<std::byte, attributeBytes>{});
    }
    nlmsghdr end{};
    end.nlmsg_len = sizeof end;
    end.nlmsg_type = NLMSG_DONE;
    append(datagrams.emplace_back(), end);
    return datagrams;
}

// A dump that lies ready.
class ReadyTransport final : public NetlinkTransport {
  public:
    bool dump(std::span<const std::byte>, const Consumer& consume) override {
        return !std::ranges::all_of(datagrams, consume);
    }

    const std::vector<std::vector<std::byte>> datagrams = sockDiagDump();
};

void BM_DecodeSockDiag(benchmark::State& state) {
    ReadyTransport transport;
    std::size_t bytes = 0;
    for (const auto& datagram : transport.datagrams)
        bytes += datagram.size();
    for ([[maybe_unused]] auto iteration : state) {
        const auto sockets =
            dumpTcpSockets(transport, AddressFamily::ipv4, SocketScope::listening, std::nullopt);
        benchmark::DoNotOptimize(sockets);
        expect(state, sockets && sockets->size() == kSockets);
    }
    countSockets(state, bytes);
}
BENCHMARK(BM_DecodeSockDiag)->Unit(benchmark::kMicrosecond);

std::string procNetTcp() {
    std::string text = "  sl  local_address rem_address   st tx_queue rx_queue tr tm->when retrnsmt"
                       "   uid  timeout inode";
    text.resize(149, ' ');
    text += '\n';
    for (int index = 0; index < kSockets; ++index) {
        std::array<char, 150> line{};
        const int length = std::snprintf(
            line.data(), line.size(),
            "%4d: 0100007F:%04X 00000000:0000 0A 00000000:00000000 00:00000000 00000000 "
            "%5u %8d %llu 1 0000000000000000 100 0 0 10 0",
            index, unsigned{portOf(index)}, 1'000U, 0,
            static_cast<unsigned long long>(inodeOf(index)));
        text.append(line.data(), static_cast<std::size_t>(length));
        // The kernel pads its lines.
        text.resize((static_cast<std::size_t>(index) + 2) * 150 - 1, ' ');
        text += '\n';
    }
    return text;
}

void BM_DecodeProcNetTcp(benchmark::State& state) {
    const std::string text = procNetTcp();
    for ([[maybe_unused]] auto iteration : state) {
        std::vector<KernelTcpSocket> sockets;
        decodeProcNetTcp(text, AddressFamily::ipv4, SocketScope::listening, sockets);
        benchmark::DoNotOptimize(sockets.data());
        expect(state, sockets.size() == kSockets);
    }
    countSockets(state, text.size());
}
BENCHMARK(BM_DecodeProcNetTcp)->Unit(benchmark::kMicrosecond);

// The question that a walk asks for every socket descriptor of the machine; one in ten listens.
void BM_FindSocketByInode(benchmark::State& state) {
    std::vector<KernelTcpSocket> sockets;
    sockets.reserve(kSockets);
    for (int index = 0; index < kSockets; ++index) {
        sockets.push_back({{AddressFamily::ipv4, TcpState::listen, portOf(index), 0},
                           1'000,
                           inodeOf(index * 10)});
    }
    for ([[maybe_unused]] auto iteration : state) {
        const SocketIndex socketIndex(sockets);
        int found = 0;
        for (int index = 0; index < kSockets * 10; ++index)
            found += socketIndex.find(inodeOf(index)) ? 1 : 0;
        expect(state, found == kSockets);
    }
    state.SetItemsProcessed(state.iterations() * kSockets * 10);
}
BENCHMARK(BM_FindSocketByInode)->Unit(benchmark::kMicrosecond);

// ---- decoder of macOS --------------------------------------------------------------------------

std::vector<std::byte> tcpPcbList() {
    constexpr std::size_t headBytes = 24;
    constexpr std::size_t entryBytes = 524; // long enough to hold the owner
    std::vector<std::byte> table((kSockets + 2) * entryBytes);
    const auto store = [&table](std::size_t offset, auto value) {
        std::memcpy(table.data() + offset, &value, sizeof value);
    };
    store(0, static_cast<std::uint32_t>(headBytes));
    std::size_t entry = headBytes;
    for (int index = 0; index < kSockets; ++index) {
        store(entry, static_cast<std::uint32_t>(entryBytes));
        store(entry + 22, htons(portOf(index)));
        store(entry + 180, std::uint32_t{30});
        store(entry + 252, std::uint32_t{501});
        entry += entryBytes;
    }
    store(entry, static_cast<std::uint32_t>(headBytes));
    table.resize(entry + headBytes);
    return table;
}

void BM_DecodeTcpPcbList(benchmark::State& state) {
    const std::vector<std::byte> table = tcpPcbList();
    for ([[maybe_unused]] auto iteration : state) {
        const auto entries = decodeTcpPcbList(table, 501);
        benchmark::DoNotOptimize(entries);
        expect(state, entries && entries->size() == kSockets);
    }
    countSockets(state, table.size());
}
BENCHMARK(BM_DecodeTcpPcbList)->Unit(benchmark::kMicrosecond);

// ---- names -------------------------------------------------------------------------------------

void BM_MakeDisplayName(benchmark::State& state) {
    constexpr std::array<std::string_view, 4> paths{
        "/usr/sbin/sshd",
        "/opt/MySQLServer8/bin/mysqlServerDaemon",
        "/Applications/Some "
        "Editor.app/Contents/Frameworks/HelperTools.framework/Helpers/langServer",
        "/Applications/DatabaseViewer.app/Contents/MacOS/DatabaseViewer",
    };
    for ([[maybe_unused]] auto iteration : state) {
        for (const std::string_view path : paths)
            benchmark::DoNotOptimize(makeDisplayName(path, processNameOf(path)));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(paths.size()));
}
BENCHMARK(BM_MakeDisplayName);

// ---- records -----------------------------------------------------------------------------------

enum class Owners : std::uint8_t { known, halfKnown };

std::vector<OccupiedPort> records(Owners owners) {
    std::vector<OccupiedPort> list;
    for (int index = 0; index < kSockets; ++index) {
        OccupiedPort& record = list.emplace_back();
        record.port = 20'000 + index;
        record.proto = protoName(index % 2 == 0 ? AddressFamily::ipv4 : AddressFamily::ipv6);
        record.user = "1000";
        if (owners == Owners::halfKnown && index % 2 == 0)
            continue;
        record.processName = "worker-" + std::to_string(index % kProcesses);
        record.displayName = "Worker " + std::to_string(index % kProcesses);
        record.pid = 2'000 + index % kProcesses;
        record.executablePath = "/opt/services/current/bin/" + record.processName;
    }
    return list;
}

void BM_MergeWithCache(benchmark::State& state) {
    const std::vector<OccupiedPort> fresh = records(Owners::halfKnown);
    const std::vector<OccupiedPort> cached = records(Owners::known);
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming(); // the copies are not what is measured
        std::vector<OccupiedPort> freshCopy = fresh;
        std::vector<OccupiedPort> cachedCopy = cached;
        state.ResumeTiming();
        std::vector<OccupiedPort> merged =
            mergeWithCache(std::move(freshCopy), std::move(cachedCopy));
        benchmark::DoNotOptimize(merged.data());
        state.PauseTiming();
        expect(state, merged == cached);
        merged = {};
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * kSockets);
}
BENCHMARK(BM_MergeWithCache)->Unit(benchmark::kMicrosecond);

void BM_EncodeJson(benchmark::State& state) {
    const std::vector<OccupiedPort> list = records(Owners::known);
    std::size_t bytes = 0;
    for ([[maybe_unused]] auto iteration : state) {
        const std::string json = encodeOccupiedPorts(list);
        benchmark::DoNotOptimize(json.data());
        bytes = json.size();
    }
    countSockets(state, bytes);
}
BENCHMARK(BM_EncodeJson)->Unit(benchmark::kMicrosecond);

void BM_DecodeJson(benchmark::State& state) {
    const std::string json = encodeOccupiedPorts(records(Owners::known));
    for ([[maybe_unused]] auto iteration : state) {
        const std::optional<std::vector<OccupiedPort>> list = decodeOccupiedPorts(json);
        benchmark::DoNotOptimize(list);
        expect(state, list && list->size() == kSockets);
    }
    countSockets(state, json.size());
}
BENCHMARK(BM_DecodeJson)->Unit(benchmark::kMicrosecond);

// ---- the scan ----------------------------------------------------------------------------------

// A system of processes that each listen on two ports and have three connections. It answers at
// once, so that the time of a scan is the scanner's own.
class ReadyTables final : public ProcessTables {
  public:
    ReadyTables() {
        for (int index = 0; index < kProcesses; ++index) {
            Process& process = processes_.emplace_back();
            process.path = "/opt/services/current/bin/worker-" + std::to_string(index);
            for (int connection = 0; connection < 3; ++connection)
                process.sockets.push_back(
                    {AddressFamily::ipv4, TcpState::established, portOf(index), 443});
            for (const int listener : {index, index + kProcesses})
                process.sockets.push_back(
                    {AddressFamily::ipv4, TcpState::listen, portOf(listener), 0});
        }
        for (int index = 0; index < kSockets; ++index) {
            table_.push_back({portOf(index), 0, AddressFamily::ipv4, 1'000});
            ports_.push_back(portOf(index));
        }
        std::sort(ports_.begin(), ports_.end());
    }

    std::unique_ptr<ProcessSnapshot>
    beginSnapshot(std::optional<std::int64_t> port) const override {
        return std::make_unique<Snapshot>(*this, port);
    }

  private:
    struct Process {
        std::vector<TcpSocket> sockets;
        std::string path;
    };

    static constexpr ProcessId kFirstPid = 2'000;

    class Snapshot final : public ProcessSnapshot {
      public:
        Snapshot(const ReadyTables& tables, std::optional<std::int64_t> port)
            : tables_(tables), port_(port) {
            std::copy_if(tables.table_.begin(), tables.table_.end(), std::back_inserter(table_),
                         [this](const TcpTableEntry& entry) { return matches(entry.localPort); });
        }

        const std::vector<TcpTableEntry>& tcpTable() const override { return table_; }

        std::vector<AddressFamily> silentFamilies() const override { return {}; }

        std::optional<std::vector<std::uint16_t>> attributablePorts() const override {
            return port_ ? std::vector{static_cast<std::uint16_t>(*port_)} : tables_.ports_;
        }

        std::vector<ProcessId> pids() const override {
            std::vector<ProcessId> pids(kProcesses);
            std::iota(pids.begin(), pids.end(), kFirstPid);
            return pids;
        }

        void appendTcpSockets(ProcessId pid, std::vector<TcpSocket>& sockets) const override {
            const Process& process = find(pid);
            std::copy_if(process.sockets.begin(), process.sockets.end(),
                         std::back_inserter(sockets),
                         [this](const TcpSocket& socket) { return matches(socket.localPort); });
        }

        std::optional<std::int64_t> startTime(ProcessId) const override { return 0; }

        std::optional<UserId> realUid(ProcessId) const override { return 1'000; }

        std::string executablePath(ProcessId pid) const override { return find(pid).path; }

      private:
        bool matches(std::uint16_t port) const { return !port_ || *port_ == port; }

        const Process& find(ProcessId pid) const {
            return tables_.processes_.at(static_cast<std::size_t>(pid - kFirstPid));
        }

        const ReadyTables& tables_;
        std::optional<std::int64_t> port_;
        std::vector<TcpTableEntry> table_;
    };

    std::vector<Process> processes_;
    std::vector<TcpTableEntry> table_;
    std::vector<std::uint16_t> ports_;
};

// The first argument bounds the threads, the second is the port that is asked for, 0 for all.
void BM_Scan(benchmark::State& state) {
    const ReadyTables tables;
    const PortScanner scanner(
        tables, [](std::uint16_t, AddressFamily) { return false; },
        static_cast<unsigned>(state.range(0)));
    const auto filter =
        state.range(1) == 0 ? std::nullopt : std::optional<std::int64_t>(state.range(1));
    for ([[maybe_unused]] auto iteration : state) {
        const std::vector<OccupiedPort> ports = scanner.scanListeningSockets(filter);
        expect(state, ports.size() == (filter ? 1 : kSockets) && ports.front().pid != 0);
    }
}
BENCHMARK(BM_Scan)
    ->ArgNames({"threads", "port"})
    ->Args({1, 0})
    ->Args({4, 0})
    ->Args({1, portOf(kProcesses / 2)})
    ->Args({4, portOf(kProcesses / 2)})
    ->UseRealTime()
    ->MeasureProcessCPUTime()
    ->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace zenlot
