#include "inventory/linux/linux_port_services.h"

#include "inventory/linux/listening_socket_reader.h"
#include "inventory/process_names.h"

#include <utility>

namespace zenlot {

LinuxPortServices::LinuxPortServices(std::unique_ptr<NetlinkTransport> transport,
                                     std::string controlGroups, const std::string& processes)
    : procFiles_(processes), transport_(std::move(transport)),
      controlGroups_(std::move(controlGroups)) {}

// Units of a user's own manager are called like those of the system, and are something else.
bool LinuxPortServices::isOfUser(const ControlGroup& group) const {
    if (group.processes.empty())
        return false;
    const auto path = procFiles_.read(std::to_string(group.processes.front()) + "/cgroup");
    return path && path->find("/user.slice/") != std::string::npos;
}

std::string LinuxPortServices::serviceOnPort(std::uint16_t port) const {
    for (const ListeningSocket& socket : readListeningSockets(procFiles_, *transport_, port)) {
        if (socket.controlGroup == 0)
            continue;
        const auto group = findControlGroup(socket.controlGroup, controlGroups_);
        if (group && !isOfUser(*group))
            return sanitizedUtf8(group->name);
    }
    return {};
}

} // namespace zenlot
