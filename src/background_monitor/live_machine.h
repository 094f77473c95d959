// The machine as it is: socket diagnostics and /proc.
#pragma once

#include "background_monitor/attempt_tracker.h"
#include "background_monitor/bounded_work.h"
#include "inventory/linux/netlink_transport.h"
#include "inventory/linux/proc_files.h"
#include "inventory/occupied_port.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

// What people call a control group, by the name of its folder: a unit without its ending, a
// container with the first digits of its number. Empty for other groups.
std::string nameOfControlGroup(std::string_view folder);

// Whether a command line, as /proc has it, holds the number as a word or a part of one.
bool mentionsNumber(std::string_view commandLine, std::uint16_t number);

class LiveMachine final : public Machine {
  public:
    // The processes that are said to own a port, to be asked first: a walk over all of them takes
    // its time. It may be wrong.
    using OwnerHint = std::function<ProcessId(std::uint16_t port)>;

    explicit LiveMachine(OwnerHint ownerHint);

    std::vector<ListeningSocket> listeningSockets() const override;
    bool isRunning(const Attempt& attempt) const override;
    std::vector<std::uint64_t> socketsOfTree(ProcessId pid) const override;
    bool keepsUnusedSocket(ProcessId pid) const override;
    std::optional<PortHolder> holderOf(const ListeningSocket& socket) const override;
    std::vector<PortAnswer> writtenPorts(const Attempt& attempt,
                                         std::span<const std::uint16_t> held) const override;
    bool mayListenOn(std::uint16_t port) const override;
    bool hasAddress(const IpAddress& address) const override;

  private:
    std::vector<ProcessId> treeOf(ProcessId pid) const;
    bool holds(ProcessId pid, std::uint64_t inode) const;
    ProcessId parentOf(ProcessId pid) const;
    bool isServiceManager(ProcessId pid) const;
    PortHolder describeUnseen(const ListeningSocket& socket) const;
    std::vector<ProcessId> processesOf(UserId user, std::span<const ProcessId> among) const;
    bool nameAfter(PortHolder& holder, std::span<const ProcessId> pids) const;
    std::optional<PortHolder> describe(ProcessId pid) const;

    OwnerHint ownerHint_;
    ProcFiles procFiles_;
    mutable SockDiagTransport transport_;
    mutable BoundedWork reading_;
};

} // namespace zenlot
