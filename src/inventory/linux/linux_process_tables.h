// The tables of Linux: socket diagnostics (or /proc/net/tcp, where the kernel has none) for the
// sockets, /proc for the processes. Covers the network namespace that the program runs in.
//
// A snapshot takes the listening sockets at once and reads the processes as they are asked for.
#pragma once

#include "inventory/linux/netlink_transport.h"
#include "inventory/linux/proc_files.h"
#include "inventory/process_tables.h"

#include <memory>
#include <string>

namespace zenlot {

class LinuxProcessTables final : public ProcessTables {
  public:
    explicit LinuxProcessTables(
        const std::string& procRoot = "/proc",
        std::unique_ptr<NetlinkTransport> transport = std::make_unique<SockDiagTransport>());

    std::unique_ptr<ProcessSnapshot> beginSnapshot(std::optional<std::int64_t> port) const override;

  private:
    ProcFiles procFiles_;
    std::unique_ptr<NetlinkTransport> transport_;
};

} // namespace zenlot
