// Decodes the numbers that /proc gives for a process and for the machine.
#pragma once

#include "inventory/process_inspector.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zenlot {

// What /proc/PID/stat says of a process. Times are in ticks of the user's clock (_SC_CLK_TCK).
struct ProcessStat {
    std::string name; // that the process has given itself, cut off after 15 bytes
    ProcessState state{ProcessState::unknown};
    ProcessId parentPid{0};
    std::int64_t cpuTicks{0};
    std::int64_t startTicks{0}; // since the start of the machine
    ProcessId sessionLeader{0};
    bool hasTerminal{false};

    friend bool operator==(const ProcessStat&, const ProcessStat&) = default;
};

// None when the text is not whole. The name of the program, which stands in the middle in
// parentheses, may hold anything, parentheses and line breaks included.
std::optional<ProcessStat> decodeProcessStat(std::string_view text);

// What /proc/PID/statm says, in pages. A process that has ended has none.
struct MemoryPages {
    std::uint64_t virtualPages{0};
    std::uint64_t residentPages{0};

    friend bool operator==(const MemoryPages&, const MemoryPages&) = default;
};

std::optional<MemoryPages> decodeStatm(std::string_view text);

// When the machine was started, in seconds since 1970, out of /proc/stat.
std::optional<std::int64_t> decodeBootTime(std::string_view text);

// The memory of the machine in KiB, out of /proc/meminfo.
std::optional<std::uint64_t> decodeTotalMemory(std::string_view text);

} // namespace zenlot
