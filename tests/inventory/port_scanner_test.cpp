#include "inventory/fake_process_tables.h"
#include "inventory/port_scanner.h"
#include "inventory/process_names.h"

#include <gtest/gtest.h>

#include <random>

namespace zenlot {
namespace {

using enum AddressFamily;
using PortFilter = std::optional<std::int64_t>;

constexpr auto kNothingInUse = [](std::uint16_t, AddressFamily) { return false; };

// The rules read literally: the kernel's list, then one process after the other; the last owner
// of a port wins, with the first of its sockets.
std::vector<OccupiedPort> scanInSequence(const FakeProcessTables& tables, PortFilter filter) {
    const auto isWanted = [&](std::int64_t port) { return port && filter.value_or(port) == port; };
    std::map<std::int64_t, OccupiedPort> ports;
    for (const auto& [port, foreignPort, family, user, identity] : tables.table) {
        if (foreignPort == 0 && isWanted(port))
            ports.insert({port, {port, protoName(family), "", "", 0, std::to_string(user), ""}});
    }
    for (const auto& [pid, sockets, user, path, start] : tables.processes) {
        const std::string name = processNameOf(path);
        OccupiedPort record{
            0,    "",   name, makeDisplayName(path, name), pid, std::to_string(user.value_or(0)),
            path, start};
        std::map<std::int64_t, OccupiedPort> owned;
        for (const TcpSocket& socket : sockets) {
            record.port = socket.localPort;
            record.proto = protoName(socket.family);
            if (pid > 1 && socket.state == TcpState::listen && isWanted(socket.localPort))
                owned.insert({record.port, record});
        }
        owned.merge(ports);
        ports = std::move(owned);
    }
    std::vector<OccupiedPort> result;
    std::ranges::transform(ports, std::back_inserter(result),
                           [](auto& each) { return each.second; });
    return result;
}

void fill(FakeProcessTables& tables, unsigned seed) {
    std::mt19937 random(seed);
    const auto below = [&](unsigned end) { return static_cast<std::uint16_t>(random() % end); };
    const auto family = [&] { return below(2) == 0 ? ipv4 : ipv6; };
    const auto state = [&] { return below(3) == 0 ? TcpState::closed : TcpState::listen; };
    const unsigned ports = 1U + below(12);
    tables.knowsAttributablePorts = below(2) == 0;
    for (int entries = below(20); entries > 0; --entries)
        tables.table.push_back({below(ports), below(2), family(), below(3)});
    for (ProcessId pid = below(300); pid >= 0; --pid) {
        FakeProcess process{pid, {}, std::nullopt, "", 1000 - pid};
        if (below(4) != 0)
            process = {pid, {}, below(3), "/opt/Some.app/program" + std::to_string(pid)};
        for (int sockets = below(5) - 2; sockets > 0; --sockets)
            process.sockets.push_back({family(), state(), below(ports), 0});
        tables.processes.push_back(process);
    }
    std::ranges::shuffle(tables.processes, random);
}

TEST(PortScannerTest, ParallelWalkGivesWhatTheSequentialOneGives) {
    for (unsigned seed = 0; seed < 250; ++seed) {
        FakeProcessTables tables;
        fill(tables, seed);
        for (const unsigned workers : {1U, 4U}) {
            const PortScanner scanner(tables, kNothingInUse, workers);
            for (const PortFilter filter : {PortFilter(), PortFilter(0), PortFilter(3)})
                ASSERT_EQ(scanner.scanListeningSockets(filter), scanInSequence(tables, filter))
                    << "seed " << seed << ", workers " << workers;
        }
    }
}

TEST(PortScannerTest, ProbesOnlyWhereTheKernelIsSilent) {
    FakeProcessTables tables;
    tables.silentFamilies = {ipv4, ipv6};
    std::atomic<int> probes{0};
    const PortScanner scanner(tables, [&probes](std::uint16_t port, AddressFamily family) {
        ++probes;
        return (port == 65535 && family == ipv4) || (port == 1 && family == ipv6);
    });
    const std::vector<OccupiedPort> expected{{1, "TCP6", "", "", 0, "", ""},
                                             {65535, "TCP4", "", "", 0, "", ""}};
    EXPECT_EQ(scanner.listOccupiedPorts(), expected);
    EXPECT_EQ(scanner.scanListeningSockets(1), std::vector{expected[0]});
    EXPECT_EQ(probes.exchange(0), 2 * 65535 - 1 + 2);
    for (const std::int64_t port : {-1, 0, 65536, 65536 + 1})
        EXPECT_TRUE(scanner.scanListeningSockets(port).empty()) << port;
    tables.silentFamilies = {ipv4}; // the other one has answered that nothing listens
    EXPECT_TRUE(scanner.scanListeningSockets(1).empty());
    EXPECT_EQ(probes.exchange(0), 1);
    tables.table = {{22, 0, ipv6, 0}}; // something is known
    EXPECT_EQ(scanner.listOccupiedPorts().size(), 1U);
    tables.table.clear();
    tables.silentFamilies.clear();
    for (const PortFilter filter : {PortFilter(), PortFilter(1), PortFilter(65535)})
        EXPECT_TRUE(scanner.scanListeningSockets(filter).empty());
    EXPECT_EQ(probes, 0);
}

} // namespace
} // namespace zenlot
