// The machine as it is: socket diagnostics and /proc.
#pragma once

#include "background_monitor/attempt_tracker.h"
#include "inventory/linux/netlink_transport.h"
#include "inventory/linux/proc_files.h"
#include "inventory/occupied_port.h"

#include <functional>
#include <optional>

namespace zenlot {

class LiveMachine final : public Machine {
  public:
    // The processes that are said to own a port, to be asked first: a walk over all of them takes
    // its time. It may be wrong.
    using OwnerHint = std::function<ProcessId(std::uint16_t port)>;

    explicit LiveMachine(OwnerHint ownerHint);

    std::vector<ListeningSocket> listeningSockets() const override;
    bool isRunning(const Attempt& attempt) const override;
    std::vector<std::uint64_t> socketsOfTree(ProcessId pid) const override;
    std::optional<PortHolder> holderOf(const ListeningSocket& socket) const override;
    std::vector<std::uint16_t> writtenPorts(const Attempt& attempt,
                                            std::span<const std::uint16_t> held) const override;

  private:
    std::vector<ProcessId> treeOf(ProcessId pid) const;
    bool holds(ProcessId pid, std::uint64_t inode) const;
    ProcessId parentOf(ProcessId pid) const;
    bool isServiceManager(ProcessId pid) const;
    PortHolder describeUnseen(const ListeningSocket& socket) const;
    std::optional<PortHolder> describe(ProcessId pid) const;

    OwnerHint ownerHint_;
    ProcFiles procFiles_;
    mutable SockDiagTransport transport_;
};

} // namespace zenlot
