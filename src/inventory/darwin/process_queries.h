// Asks the kernel about one process. What can't be had is left out.
#pragma once

#include "inventory/darwin/darwin_calls.h"
#include "inventory/process_tables.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace zenlot {

// The descriptors of every kind, as an array of whole ProcFdInfo records.
std::vector<std::byte> queryDescriptors(const DarwinCalls& calls, ProcessId pid);

// The TCP sockets among `descriptors`, an answer of queryDescriptors, in its order.
std::vector<TcpSocket> queryTcpSockets(const DarwinCalls& calls, ProcessId pid,
                                       std::span<const std::byte> descriptors);

// The path of the program, as UTF-8 with U+FFFD for what is not; empty when it can't be had.
std::string queryExecutablePath(const DarwinCalls& calls, ProcessId pid);

} // namespace zenlot
