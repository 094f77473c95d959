#include "inventory/fake_process_tables.h"
#include "inventory/port_scanner.h"
#include "inventory/process_identity.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <random>
#include <set>

namespace zenlot {
namespace {

constexpr AddressFamily kIpv4 = AddressFamily::ipv4;
constexpr AddressFamily kIpv6 = AddressFamily::ipv6;

bool nothingInUse(std::uint16_t, AddressFamily) {
    return false;
}

TcpSocket listening(std::uint16_t port, AddressFamily family = kIpv4) {
    return {family, TcpState::listen, port, 0};
}

// The rules read literally: one process after the other, each socket in turn, the last owner wins.
std::vector<OccupiedPort> scanInSequence(const FakeProcessTables& tables,
                                         std::optional<std::int64_t> filter,
                                         const BindProbe& bindProbe) {
    const auto wanted = [filter](std::uint16_t port) {
        return port != 0 && (!filter || *filter == port);
    };
    std::vector<OccupiedPort> kernelList;
    std::set<std::uint16_t> seenPorts;
    for (const TcpTableEntry& entry : tables.table) {
        if (entry.foreignPort == 0 && wanted(entry.localPort) &&
            seenPorts.insert(entry.localPort).second)
            kernelList.push_back({entry.localPort, entry.family == kIpv6 ? "TCP6" : "TCP4", "", "",
                                  0, std::to_string(entry.ownerUid), ""});
    }
    std::map<std::int64_t, OccupiedPort> owners;
    std::set<std::pair<ProcessId, std::uint16_t>> seenSockets;
    for (const FakeProcess& process : tables.processes) {
        for (const TcpSocket& socket : process.sockets) {
            if (process.pid < 2 || socket.state != TcpState::listen || !wanted(socket.localPort) ||
                !seenSockets.insert({process.pid, socket.localPort}).second)
                continue;
            const std::string name = processNameOf(process.executablePath);
            owners[socket.localPort] = {socket.localPort,
                                        socket.family == kIpv6 ? "TCP6" : "TCP4",
                                        name,
                                        makeDisplayName(process.executablePath, name),
                                        process.pid,
                                        std::to_string(process.realUid.value_or(0)),
                                        process.executablePath};
        }
    }
    std::vector<OccupiedPort> result = kernelList;
    for (OccupiedPort& record : result) {
        if (owners.contains(record.port))
            record = owners.at(record.port);
    }
    for (const auto& [port, record] : owners) {
        if (!seenPorts.contains(static_cast<std::uint16_t>(port)))
            result.push_back(record);
    }
    if (result.empty()) {
        for (std::int64_t port = filter.value_or(1); port <= filter.value_or(65535); ++port) {
            if (!isValidPort(port))
                continue;
            const auto number = static_cast<std::uint16_t>(port);
            if (bindProbe(number, kIpv4))
                result.push_back({port, "TCP4", "", "", 0, "", ""});
            else if (bindProbe(number, kIpv6))
                result.push_back({port, "TCP6", "", "", 0, "", ""});
        }
    }
    std::ranges::stable_sort(result, {}, &OccupiedPort::port);
    return result;
}

class RandomTables {
  public:
    explicit RandomTables(unsigned seed) : random_(seed) {}

    void fill(FakeProcessTables& tables) {
        tables.knowsAttributablePorts = below(2) == 0;
        const int ports = 1 + below(12);
        const auto port = [&] { return static_cast<std::uint16_t>(below(ports)); };
        for (int i = below(20); i > 0; --i)
            tables.table.push_back({port(), static_cast<std::uint16_t>(below(4) == 0 ? 9 : 0),
                                    below(2) == 0 ? kIpv4 : kIpv6, static_cast<UserId>(below(3))});
        std::set<ProcessId> pids;
        for (int i = below(300); i > 0; --i)
            pids.insert(below(1000));
        std::vector<ProcessId> order(pids.begin(), pids.end());
        std::ranges::shuffle(order, random_);
        for (const ProcessId pid : order) {
            FakeProcess process{pid, {}, std::nullopt, ""};
            if (below(4) != 0)
                process.realUid = static_cast<UserId>(below(3));
            if (below(4) != 0)
                process.executablePath = "/opt/Some.app/program" + std::to_string(pid);
            for (int j = below(5) - 2; j > 0; --j)
                process.sockets.push_back({below(2) == 0 ? kIpv4 : kIpv6,
                                           below(3) == 0 ? TcpState::established : TcpState::listen,
                                           port(), 0});
            tables.processes.push_back(std::move(process));
        }
    }

  private:
    int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random_); }

    std::mt19937 random_;
};

TEST(PortScannerTest, ParallelWalkGivesWhatTheSequentialOneGives) {
    const auto probe = [](std::uint16_t port, AddressFamily family) {
        return port == 3 || (port == 5 && family == kIpv6);
    };
    for (unsigned seed = 0; seed < 250; ++seed) {
        FakeProcessTables tables;
        RandomTables(seed).fill(tables);
        for (const unsigned workers : {1U, 4U}) {
            const PortScanner scanner(tables, probe, workers);
            for (const std::optional<std::int64_t> filter :
                 {std::optional<std::int64_t>(), std::optional<std::int64_t>(3),
                  std::optional<std::int64_t>(5), std::optional<std::int64_t>(0)}) {
                ASSERT_EQ(scanner.scanListeningSockets(filter),
                          scanInSequence(tables, filter, probe))
                    << "seed " << seed << ", workers " << workers << ", filter "
                    << filter.value_or(-1);
            }
        }
    }
}

// Counts the processes that a walk looks into.
class CountingTables final : public ProcessTables {
  public:
    explicit CountingTables(const FakeProcessTables& tables) : tables_(tables) {}

    std::unique_ptr<ProcessSnapshot>
    beginSnapshot(std::optional<std::int64_t> port) const override {
        return std::make_unique<Snapshot>(tables_.beginSnapshot(port), visits);
    }

    mutable std::atomic<int> visits{0};

  private:
    class Snapshot final : public ProcessSnapshot {
      public:
        Snapshot(std::unique_ptr<ProcessSnapshot> inner, std::atomic<int>& visits)
            : inner_(std::move(inner)), visits_(visits) {}
        const std::vector<TcpTableEntry>& tcpTable() const override { return inner_->tcpTable(); }
        std::optional<std::vector<std::uint16_t>> attributablePorts() const override {
            return inner_->attributablePorts();
        }
        std::vector<ProcessId> pids() const override { return inner_->pids(); }
        void appendTcpSockets(ProcessId pid, std::vector<TcpSocket>& sockets) const override {
            ++visits_;
            inner_->appendTcpSockets(pid, sockets);
        }
        std::optional<UserId> realUid(ProcessId pid) const override { return inner_->realUid(pid); }
        std::string executablePath(ProcessId pid) const override {
            return inner_->executablePath(pid);
        }

      private:
        std::unique_ptr<ProcessSnapshot> inner_;
        std::atomic<int>& visits_;
    };

    const FakeProcessTables& tables_;
};

TEST(PortScannerTest, WalkEndsWhereNothingCanChangeAnyMore) {
    FakeProcessTables tables;
    tables.table = {{80, 0, kIpv4, 0}, {81, 0, kIpv4, 0}};
    for (ProcessId pid = 2; pid < 500; ++pid)
        tables.processes.push_back({pid, {}, 7, "/bin/worker"});
    tables.processes[490].sockets = {listening(80)};
    tables.processes[480].sockets = {listening(81)};
    const CountingTables counted(tables);
    const PortScanner scanner(counted, nothingInUse, 1);

    EXPECT_EQ(scanner.scanListeningSockets(80).at(0).pid, 492);
    EXPECT_EQ(counted.visits.exchange(0), 8);
    EXPECT_EQ(scanner.scanListeningSockets(82).size(), 0U);
    EXPECT_EQ(counted.visits.exchange(0), 0);
    EXPECT_EQ(scanner.listOccupiedPorts().size(), 2U);
    EXPECT_EQ(counted.visits.exchange(0), 18);
    tables.knowsAttributablePorts = false;
    EXPECT_EQ(scanner.listOccupiedPorts().size(), 2U);
    EXPECT_EQ(counted.visits, 498);
}

TEST(PortScannerTest, WalksMoreProcessesThanAFixedBufferWouldHold) {
    FakeProcessTables tables;
    for (ProcessId pid = 2; pid < 10'000; ++pid)
        tables.processes.push_back({pid, {}, 7, "/bin/worker"});
    tables.processes.front().sockets = {listening(80)};
    tables.processes.back().sockets = {listening(81)};
    const auto ports = PortScanner(tables, nothingInUse).listOccupiedPorts();
    ASSERT_EQ(ports.size(), 2U);
    EXPECT_EQ(ports[0].pid, 2);
    EXPECT_EQ(ports[1].pid, 9'999);
}

TEST(PortScannerTest, ProbesOnlyWhenNothingIsKnown) {
    FakeProcessTables tables;
    std::atomic<int> probes{0};
    const PortScanner scanner(tables, [&probes](std::uint16_t port, AddressFamily family) {
        ++probes;
        return (port == 65535 && family == kIpv4) || (port == 1 && family == kIpv6);
    });
    const std::vector<OccupiedPort> expected{{1, "TCP6", "", "", 0, "", ""},
                                             {65535, "TCP4", "", "", 0, "", ""}};
    EXPECT_EQ(scanner.listOccupiedPorts(), expected);
    EXPECT_EQ(probes.exchange(0), 2 * 65535 - 1);
    for (const std::int64_t port : {std::int64_t{-1}, std::int64_t{0}, std::int64_t{65536},
                                    std::int64_t{65536 + 80}, std::int64_t{1} << 40})
        EXPECT_TRUE(scanner.scanListeningSockets(port).empty()) << port;
    EXPECT_EQ(probes, 0);

    tables.table = {{22, 0, kIpv6, 0}};
    EXPECT_EQ(scanner.listOccupiedPorts(),
              (std::vector<OccupiedPort>{{22, "TCP6", "", "", 0, "0", ""}}));
    EXPECT_EQ(probes, 0);
}

} // namespace
} // namespace zenlot
