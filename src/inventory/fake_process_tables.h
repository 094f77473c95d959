// A ProcessTables for tests, made of plain lists.
#pragma once

#include "inventory/process_tables.h"

#include <algorithm>
#include <atomic>
#include <map>
#include <set>

namespace zenlot {

struct FakeProcess {
    ProcessId pid{0};
    std::vector<TcpSocket> sockets;
    std::optional<UserId> realUid;
    std::string executablePath;
    std::optional<std::int64_t> startTime{};
};

class FakeProcessTables final : public ProcessTables {
  public:
    std::vector<TcpTableEntry> table;
    std::vector<FakeProcess> processes;
    // Whether the fake system knows beforehand which ports its processes listen on.
    bool knowsAttributablePorts{true};
    // Of whose sockets the fake system does not tell. The table should have none of them then.
    std::vector<AddressFamily> silentFamilies;
    // How often the sockets of a process were asked for.
    mutable std::atomic<int> looks{0};

    std::unique_ptr<ProcessSnapshot>
    beginSnapshot(std::optional<std::int64_t> port) const override {
        return std::make_unique<Snapshot>(*this, port);
    }

  private:
    class Snapshot final : public ProcessSnapshot {
      public:
        Snapshot(const FakeProcessTables& tables, std::optional<std::int64_t> port)
            : tables_(tables), port_(port) {
            for (const TcpTableEntry& entry : tables.table) {
                if (matches(entry.localPort))
                    table_.push_back(entry);
            }
        }

        const std::vector<TcpTableEntry>& tcpTable() const override { return table_; }

        std::vector<AddressFamily> silentFamilies() const override {
            return tables_.silentFamilies;
        }

        std::optional<std::vector<std::uint16_t>> attributablePorts() const override {
            if (!tables_.knowsAttributablePorts)
                return std::nullopt;
            std::set<std::uint16_t> ports;
            for (const FakeProcess& process : tables_.processes) {
                for (const TcpSocket& socket : process.sockets) {
                    if (socket.state == TcpState::listen && matches(socket.localPort))
                        ports.insert(socket.localPort);
                }
            }
            return std::vector<std::uint16_t>(ports.begin(), ports.end());
        }

        std::vector<ProcessId> pids() const override {
            std::vector<ProcessId> pids;
            for (const FakeProcess& process : tables_.processes)
                pids.push_back(process.pid);
            return pids;
        }

        void appendTcpSockets(ProcessId pid, std::vector<TcpSocket>& sockets) const override {
            ++tables_.looks;
            if (const FakeProcess* process = find(pid)) {
                std::copy_if(process->sockets.begin(), process->sockets.end(),
                             std::back_inserter(sockets),
                             [this](const TcpSocket& socket) { return matches(socket.localPort); });
            }
        }

        std::optional<std::int64_t> startTime(ProcessId pid) const override {
            const FakeProcess* process = find(pid);
            return process ? process->startTime : std::nullopt;
        }

        std::optional<UserId> realUid(ProcessId pid) const override {
            const FakeProcess* process = find(pid);
            return process ? process->realUid : std::nullopt;
        }

        std::string executablePath(ProcessId pid) const override {
            const FakeProcess* process = find(pid);
            return process ? process->executablePath : std::string();
        }

      private:
        bool matches(std::uint16_t port) const { return !port_ || *port_ == port; }

        const FakeProcess* find(ProcessId pid) const {
            const auto found =
                std::find_if(tables_.processes.begin(), tables_.processes.end(),
                             [pid](const FakeProcess& process) { return process.pid == pid; });
            return found == tables_.processes.end() ? nullptr : &*found;
        }

        const FakeProcessTables& tables_;
        std::optional<std::int64_t> port_;
        std::vector<TcpTableEntry> table_;
    };
};

} // namespace zenlot
