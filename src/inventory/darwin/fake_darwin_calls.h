// A DarwinCalls for tests, which answers with prepared bytes.
//
// Without further settings it behaves as the kernel does; the settings make it misbehave: size
// questions that fail or are out of date, results that are too small or claim too much.
#pragma once

#include "inventory/darwin/darwin_calls.h"
#include "inventory/process_tables.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zenlot {

// What a sysctl answers.
struct FakeDarwinTable {
    std::vector<std::byte> contents;
    std::optional<std::size_t> announcedSize{}; // instead of the size of the contents
    std::optional<std::size_t> claimedSize{};   // instead of the bytes that were written
    bool sizeFails{false};
    bool readFails{false};
};

struct FakeDarwinProcess {
    std::vector<std::byte> descriptors; // ProcFdInfo records
    std::optional<int> announcedDescriptors{};
    std::optional<int> claimedDescriptors{};
    std::map<int, std::vector<std::byte>> sockets;       // a SocketFdInfo by its descriptor
    std::optional<std::vector<std::byte>> bsdInfo{};     // none: may not be inspected
    std::optional<std::vector<std::byte>> taskAllInfo{}; // none: may not be inspected
    std::string path;
};

class FakeDarwinCalls final : public DarwinCalls {
  public:
    FakeDarwinTable tcpPcbList;
    FakeDarwinTable allProcesses;
    FakeDarwinTable memorySize;
    std::vector<std::byte> timebase; // a MachTimebaseInfo; empty: the call fails
    std::vector<ProcessId> pids;
    std::optional<int> claimedPids;
    std::map<ProcessId, FakeDarwinProcess> processes;
    int killResult{0};
    mutable std::vector<std::pair<int, int>> signals; // pid and signal; for one thread only

    int sysctlbyname(const char* name, void* buffer, std::size_t* length) const override {
        if (name == std::string_view(kMemorySizeName))
            return answer(memorySize, buffer, length);
        return name == std::string_view(kTcpPcbListName) ? answer(tcpPcbList, buffer, length) : -1;
    }

    int sysctl(std::span<const int> name, void* buffer, std::size_t* length) const override {
        return std::ranges::equal(name, kAllProcessesName) ? answer(allProcesses, buffer, length)
                                                           : -1;
    }

    int proc_listallpids(void* buffer, int size) const override {
        const int written = write(std::as_bytes(std::span(pids)), buffer, size);
        return claimedPids.value_or(written / static_cast<int>(sizeof(ProcessId)));
    }

    int proc_pidinfo(int pid, int flavor, std::uint64_t /*argument*/, void* buffer,
                     int size) const override {
        const FakeDarwinProcess* process = find(pid);
        if (!process)
            return 0;
        if (flavor == kProcPidTbsdInfo)
            return process->bsdInfo ? write(*process->bsdInfo, buffer, size) : 0;
        if (flavor == kProcPidTaskAllInfo)
            return process->taskAllInfo ? write(*process->taskAllInfo, buffer, size) : 0;
        if (flavor != kProcPidListFds)
            return -1;
        if (!buffer)
            return process->announcedDescriptors.value_or(
                static_cast<int>(process->descriptors.size()));
        const int written = write(process->descriptors, buffer, size);
        return process->claimedDescriptors.value_or(written);
    }

    int proc_pidfdinfo(int pid, int descriptor, int flavor, void* buffer, int size) const override {
        const FakeDarwinProcess* process = find(pid);
        if (!process || flavor != kProcPidFdSocketInfo || !process->sockets.contains(descriptor))
            return -1;
        return write(process->sockets.at(descriptor), buffer, size);
    }

    int proc_pidpath(int pid, void* buffer, std::uint32_t size) const override {
        const FakeDarwinProcess* process = find(pid);
        return process
                   ? write(std::as_bytes(std::span(process->path)), buffer, static_cast<int>(size))
                   : 0;
    }

    int mach_timebase_info(void* info) const override {
        if (timebase.empty())
            return -1;
        write(timebase, info, static_cast<int>(timebase.size()));
        return 0;
    }

    int kill(int pid, int signal) const override {
        signals.emplace_back(pid, signal);
        return killResult;
    }

  private:
    static int write(std::span<const std::byte> bytes, void* buffer, int size) {
        const std::size_t written = std::min(bytes.size(), static_cast<std::size_t>(size));
        if (written > 0)
            std::memcpy(buffer, bytes.data(), written);
        return static_cast<int>(written);
    }

    static int answer(const FakeDarwinTable& table, void* buffer, std::size_t* length) {
        if (!buffer) {
            *length = table.announcedSize.value_or(table.contents.size());
            return table.sizeFails ? -1 : 0;
        }
        const bool fits = table.contents.size() <= *length;
        const int written = write(table.contents, buffer, static_cast<int>(*length));
        *length = table.claimedSize.value_or(static_cast<std::size_t>(written));
        return fits && !table.readFails ? 0 : -1;
    }

    const FakeDarwinProcess* find(ProcessId pid) const {
        const auto found = processes.find(pid);
        return found == processes.end() ? nullptr : &found->second;
    }
};

} // namespace zenlot
