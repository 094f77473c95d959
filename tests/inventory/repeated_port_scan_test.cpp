#include "inventory/fake_process_tables.h"
#include "inventory/repeated_port_scan.h"

#include <gtest/gtest.h>

#include <thread>

namespace zenlot {
namespace {

using namespace std::chrono_literals;
using enum AddressFamily;

class RepeatedPortScanTest : public testing::Test {
  protected:
    // What a poll does: look up ports, only glance at some processes, or neither.
    char poll() {
        tables.looks = 0;
        const SharedPorts last = std::exchange(ports, scan.listOccupiedPorts());
        return ports != last ? 'w' : tables.looks > 0 ? 'g' : '.';
    }
    std::string polls(int count) {
        std::string seen;
        for (; count > 0; --count, now += 3s)
            seen += poll();
        return seen;
    }
    std::vector<TcpSocket>& addProcess(ProcessId pid, const std::vector<TcpSocket>& sockets) {
        tables.processes.push_back({pid, sockets, 1000, "/bin/program" + std::to_string(pid)});
        return tables.processes.back().sockets;
    }

    FakeProcessTables tables;
    PortScanner scanner{tables, [](std::uint16_t, AddressFamily) { return false; }};
    std::chrono::steady_clock::time_point now;
    RepeatedPortScan scan{scanner, [this] { return now; }};
    SharedPorts ports;
};

TEST_F(RepeatedPortScanTest, LooksUpWhatMayHaveChangedAndNothingElse) {
    const std::vector<TcpSocket> listener{{ipv4, TcpState::listen, 80, 0}};
    const std::vector<TcpSocket> connection{{ipv4, TcpState::established, 80, 99}};
    // A newcomer that has other sockets some time after its first poll.
    const auto change = [&](ProcessId pid, const std::vector<TcpSocket>& first,
                            std::chrono::seconds delay, const std::vector<TcpSocket>& then) {
        auto& sockets = addProcess(pid, first);
        const auto end = now + delay;
        polls(static_cast<int>((delay + 2s) / 3s));
        now = end;
        sockets = then;
    };
    const std::tuple<const char*, std::function<void()>, const char*> cases[] = {
        {"nothing", [] {}, "..."},
        {"the init process, which is not walked", [&] { addProcess(1, listener); }, "..."},
        {"another socket on the port", [&] { tables.table[0].identity = 2; }, "w.."},
        {"sockets can't be told apart", [&] { tables.table[0].identity.reset(); }, "www"},
        {"the owner ends", [&] { tables.processes.erase(tables.processes.begin()); }, "w.."},
        {"a newcomer without listeners", [&] { addProcess(11, connection); }, "gg."},
        {"a newcomer with a listener", [&] { addProcess(12, listener); }, "ww."},
        {"a newcomer that drops its listener soon", [&] { change(13, listener, 1s, {}); }, "wg."},
        {"a newcomer that gets a listener soon", [&] { change(14, {}, 3s, listener); }, "w.."},
        {"a process that gets a listener late", [&] { change(15, {}, 6s, listener); }, "..."},
        {"the list is as old as it may be",
         [&] {
             now += RepeatedPortScan::kLongestReuse;
             polls(1);
             now += RepeatedPortScan::kLongestReuse - 3s;
         },
         ".w."},
    };
    for (const auto& [name, happen, expected] : cases) {
        tables.table = {{80, 0, ipv4, 1000, 1}};
        if (tables.processes.empty())
            addProcess(10, listener);
        now += RepeatedPortScan::kLongestReuse;
        polls(3);
        ASSERT_EQ(poll(), '.') << name;
        happen();
        EXPECT_EQ(polls(3), expected) << name;
    }
}

TEST_F(RepeatedPortScanTest, DropsClosedPortsWithoutALookAtProcesses) {
    addProcess(10, {{ipv4, TcpState::listen, 81, 0}});
    tables.table = {{80, 0, ipv4, 1000, 1}, {81, 0, ipv4, 1000, 2}};
    polls(3);
    tables.table = {{81, 0, ipv4, 1000, 2}, {90, 0, ipv4, 1000, 3}};
    tables.silentFamilies = {ipv6};
    EXPECT_EQ(scan.dropClosedPorts()->size(), 2U) << "what the kernel is silent about may be open";
    tables.silentFamilies.clear();
    tables.looks = 0;
    const SharedPorts left = scan.dropClosedPorts();
    ASSERT_EQ(left->size(), 1U);
    EXPECT_EQ(left->front().port, 81);
    EXPECT_EQ(scan.dropClosedPorts(), left) << "the very same list, while nothing changes";
    EXPECT_EQ(tables.looks, 0);
    EXPECT_EQ(scan.listOccupiedPorts()->size(), 2U) << "the new one is found by the next scan";
}

TEST_F(RepeatedPortScanTest, ServesSeveralThreads) {
    addProcess(10, {{ipv4, TcpState::listen, 80, 0}});
    tables.table = {{80, 0, ipv4, 1000, 1}};
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([this] {
            for (int round = 0; round < 200; ++round)
                EXPECT_EQ(*scan.listOccupiedPorts(), scanner.listOccupiedPorts());
        });
}

} // namespace
} // namespace zenlot
