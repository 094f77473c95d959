// Counts the connections over IPv4 that found no route. Their sockets die without a trace of where
// they should have gone, just as those do whose bind() was refused; that there were some, and how
// many, only this counter of the kernel tells. It counts datagrams without a route as well.
//
//     FailedConnections failed;
//     const std::uint64_t since = failed.sinceLastTime();
#pragma once

#include "inventory/linux/proc_files.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zenlot {

// "OutNoRoutes" of the text of /proc/net/snmp; none when it is not there.
std::optional<std::uint64_t> decodeOutNoRoutes(std::string_view snmp);

class FailedConnections {
  public:
    explicit FailedConnections(const std::string& procRoot = "/proc");

    // 0 where the kernel does not tell.
    std::uint64_t sinceLastTime();

  private:
    ProcFiles procFiles_;
    std::uint64_t last_{0};
};

} // namespace zenlot
