// Writes what is known of a process the way the inspector shows it. Pure functions.
#pragma once

#include "inventory/process_inspector.h"

#include <QString>

#include <chrono>
#include <cstdint>

namespace zenlot {

// "312 MB"; below one MB "840 KB". Cut off, not rounded; digits without grouping.
QString residentSizeText(std::uint64_t bytes);

// "401 GB"; below one GB "96 MB". Cut off, not rounded; digits without grouping.
QString virtualSizeText(std::uint64_t bytes);

// One letter; empty for an unknown state.
QString processStatusText(ProcessState state);

// Minutes and seconds, from an hour on with hours, from a day on with days: "0:07", "1:00:00",
// "12-03:04:05". A negative time counts as none.
QString elapsedText(std::chrono::seconds elapsed);

// The time on a processor in the time since the start, as ps shows it: "3.1%", cut off after one
// decimal, and none in the first second. Several busy processors make more than 100%.
QString cpuShareText(std::chrono::milliseconds cpuTime, std::chrono::seconds elapsed);

// The part of the machine's memory, as ps shows it: "0.4%", cut off after one decimal. Empty when
// the machine's memory is not known.
QString memoryShareText(std::uint64_t residentBytes, std::uint64_t physicalBytes);

// The system's own name for a state: "LISTEN", "SYN_RCVD".
QString tcpStateText(TcpState state);

} // namespace zenlot
