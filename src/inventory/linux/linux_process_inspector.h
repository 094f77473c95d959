// Inspects processes on Linux: /proc for the process, and one dump of the kernel's TCP sockets to
// match its descriptors with. Sockets of another network namespace than the program's own are
// counted among the descriptors but not listed.
//
// The state and the sizes of any process can be read; the descriptors only where the user may
// look. A parent is called after its program where that may be seen, else as it calls itself. A
// process that has ended and waits for its parent to ask how still has a parent, a state and a
// start.
#pragma once

#include "inventory/linux/netlink_transport.h"
#include "inventory/linux/proc_files.h"
#include "inventory/process_inspector.h"

#include <memory>
#include <string>

namespace zenlot {

class LinuxProcessInspector final : public ProcessInspector {
  public:
    explicit LinuxProcessInspector(
        const std::string& procRoot = "/proc",
        std::unique_ptr<NetlinkTransport> transport = std::make_unique<SockDiagTransport>());

    ProcessFacts inspect(ProcessId pid) const override;
    std::uint64_t physicalMemoryBytes() const override;

  private:
    std::string nameOf(ProcessId pid) const;
    std::optional<TaskInfo> taskInfo(ProcessId pid) const;

    ProcFiles procFiles_;
    std::unique_ptr<NetlinkTransport> transport_;
};

} // namespace zenlot
