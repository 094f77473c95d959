#include "inventory/fake_process_tables.h"
#include "inventory/repeated_port_scan.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
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
    const TcpTableEntry other{81, 0, ipv4, 1000, 3};
    const std::tuple<const char*, std::function<void()>, const char*> cases[] = {
        {"nothing", [] {}, "..."},
        {"the init process, which is not walked", [&] { addProcess(1, listener); }, "..."},
        {"another socket on the port", [&] { tables.table[0].identity = 2; }, "w.."},
        {"another socket on another port", [&] { tables.table.push_back(other); }, "w.."},
        {"no socket any more", [&] { tables.table.clear(); }, "w.."},
        {"sockets can't be told apart", [&] { tables.table[0].identity.reset(); }, "www"},
        {"the owner ends", [&] { tables.processes.erase(tables.processes.begin()); }, "w.."},
        {"a newcomer without listeners", [&] { addProcess(11, connection); }, "gg."},
        {"a newcomer with a listener", [&] { addProcess(12, listener); }, "ww."},
        {"a newcomer that drops its listener soon",
         [&] {
             auto& sockets = addProcess(13, listener);
             polls(1);
             now -= 2s;
             sockets.clear();
         },
         "wg."},
        {"a newcomer that gets a listener soon",
         [&] {
             auto& sockets = addProcess(14, {});
             polls(1);
             sockets = listener;
         },
         "w.."},
        {"a process that gets a listener late",
         [&] {
             auto& sockets = addProcess(15, {});
             polls(2);
             sockets = listener;
         },
         "..."},
        {"the list is as old as it may be",
         [&] {
             now += RepeatedPortScan::kLongestReuse;
             polls(1);
             now += RepeatedPortScan::kLongestReuse - 3s;
         },
         ".w."},
    };
    for (const auto& [name, change, expected] : cases) {
        tables.table = {{80, 0, ipv4, 1000, 1}};
        if (tables.processes.empty())
            addProcess(10, listener);
        now += RepeatedPortScan::kLongestReuse;
        polls(3);
        ASSERT_EQ(poll(), '.') << name;
        change();
        EXPECT_EQ(polls(3), expected) << name;
    }
}

// A machine of processes that share sockets with those that they were forked from.
struct Machine {
    struct Process {
        ProcessId pid;
        UserId user;
        std::set<int> sockets;
    };
    std::mt19937 random;
    std::vector<Process> processes;
    std::map<int, TcpTableEntry> sockets;
    int made{0};

    unsigned below(std::size_t end) { return static_cast<unsigned>(random() % end); }
    Process& any() { return processes[below(processes.size())]; }

    void step() {
        switch (processes.empty() ? 0 : processes.size() > 12 ? 2 : below(5)) {
        case 0:
            processes.push_back({100 + ++made, below(2), {}});
            break;
        case 1: { // a fork, after which the new process keeps some sockets
            Process child = any();
            child.pid = 100 + ++made;
            child.user = below(2);
            std::erase_if(child.sockets, [this](int) { return below(2) == 0; });
            processes.push_back(child);
            break;
        }
        case 2:
            processes.erase(processes.begin() + below(processes.size()));
            break;
        case 3: {
            Process& process = any();
            sockets[++made] = {static_cast<std::uint16_t>(1 + below(9)), 0,
                               below(2) == 0 ? ipv4 : ipv6, process.user, made};
            process.sockets.insert(made);
            break;
        }
        default:
            if (!sockets.empty()) {
                const int closed = std::next(sockets.begin(), below(sockets.size()))->first;
                for (Process& process : processes)
                    process.sockets.erase(closed);
            }
        }
        std::erase_if(sockets, [this](const auto& socket) {
            return std::ranges::none_of(processes, [&socket](const Process& process) {
                return process.sockets.contains(socket.first);
            });
        });
    }

    void show(FakeProcessTables& tables) const {
        tables.table.clear();
        for (const auto& [number, entry] : sockets)
            tables.table.push_back(entry);
        tables.processes.clear();
        for (const Process& process : processes) {
            FakeProcess& shown = tables.processes.emplace_back();
            shown = {process.pid, {}, process.user, "/bin/p" + std::to_string(process.pid)};
            for (const int number : process.sockets) {
                const TcpTableEntry& entry = sockets.at(number);
                shown.sockets.push_back({entry.family, TcpState::listen, entry.localPort, 0});
            }
        }
        std::ranges::reverse(tables.processes); // they need not be in order
    }
};

TEST_F(RepeatedPortScanTest, GivesWhatAScanGives) {
    const PortSet all = PortSet().set().reset(0);
    Machine machine;
    int repeats = 0;
    for (int round = 0; round < 3'000; ++round) {
        if (machine.below(3) == 0)
            machine.step();
        machine.show(tables);
        repeats += poll() == 'w' ? 0 : 1;
        ASSERT_EQ(*ports, scanner.scanSnapshot(*tables.beginSnapshot({}), all))
            << "round " << round;
        now += std::chrono::milliseconds(machine.below(4000));
    }
    EXPECT_GT(repeats, 1'000);
}

TEST_F(RepeatedPortScanTest, FindsTheOwnerOfANewPortWithoutAFullWalk) {
    const auto listen = [this](std::uint16_t port) {
        addProcess(port, {{ipv4, TcpState::listen, port, 0}});
        tables.table.insert(tables.table.begin(), {port, 0, ipv4, 1000, port}); // as kernels do
    };
    for (std::uint16_t port = 1000; port < 1500; ++port)
        listen(port);
    polls(3);
    listen(1500);
    EXPECT_EQ(poll(), 'w');
    EXPECT_LT(tables.looks, 5);
    EXPECT_EQ(ports->back().pid, 1500);
    EXPECT_EQ(ports->size(), 501U);
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
