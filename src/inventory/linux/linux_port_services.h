// Goes by the control group of the listening socket, which the kernel tells to everybody.
#pragma once

#include "inventory/linux/control_group.h"
#include "inventory/linux/netlink_transport.h"
#include "inventory/linux/proc_files.h"
#include "inventory/port_services.h"

#include <memory>
#include <string>

namespace zenlot {

class LinuxPortServices final : public PortServices {
  public:
    explicit LinuxPortServices(
        std::unique_ptr<NetlinkTransport> transport = std::make_unique<SockDiagTransport>(),
        std::string controlGroups = "/sys/fs/cgroup", const std::string& processes = "/proc");

    std::string serviceOnPort(std::uint16_t port) const override;

  private:
    bool isOfUser(const ControlGroup& group) const;

    ProcFiles procFiles_;
    std::unique_ptr<NetlinkTransport> transport_;
    std::string controlGroups_;
};

} // namespace zenlot
