#include "ctl/linux/doctor.h"

#include "bindwatch/bindwatch_service.h"
#include "ctl/linux/session_bus.h"
#include "inventory/linux/netlink_transport.h"
#include "inventory/linux/process_connector.h"
#include "inventory/linux/sock_diag.h"
#include "inventory/linux/unused_socket_watch.h"
#include "posix/file_descriptor.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace zenlot {
namespace {

using enum Finding::State;

constexpr const char* kUnit = "dev.quorvane.zenlot.monitor.service";

std::string homeFolder() {
    const char* home = std::getenv("HOME"); // NOLINT(concurrency-mt-unsafe): one thread
    return home != nullptr ? home : "";
}

std::string stateFolder() {
    const char* state = std::getenv("XDG_STATE_HOME"); // NOLINT(concurrency-mt-unsafe)
    return state != nullptr && *state == '/' ? state : homeFolder() + "/.local/state";
}

std::string owner(int pid) {
    return "process " + std::to_string(pid);
}

Finding kernelTables() {
    SockDiagTransport transport;
    if (dumpListeningSockets(transport, AddressFamily::ipv4, std::nullopt))
        return {"kernel tables", works, "socket diagnostics answer"};
    if (::access("/proc/net/tcp", R_OK) == 0)
        return {"kernel tables", limited,
                "socket diagnostics do not answer; /proc/net/tcp does, and is slower"};
    return {"kernel tables", missing, "ports can only be tried one by one"};
}

Finding processEvents() {
    if (ProcessConnector().isOpen())
        return {"process events", works, "the kernel tells of starts and ends of processes"};
    return {"process events", limited,
            "the kernel does not tell this user (Linux 6.6, outside of containers, does); "
            "processes are looked for instead, and short ones missed"};
}

Finding deadSockets() {
    if (UnusedSocketWatch().descriptor() >= 0)
        return {"dead sockets", works,
                "the kernel tells when listeners end and binds were refused"};
    return {"dead sockets", limited, "refused servers are recognised by how they end alone"};
}

Finding refusedBinds() {
    const FileDescriptor socket(
        ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, kBindwatchSocket, sizeof address.sun_path - 1);
    if (socket &&
        ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return {"refused binds", works, "zenlot-bindwatch tells them exactly"};
    return {"refused binds", limited, std::string("inferred; exact with: ") + kBindwatchCommand};
}

Finding notifications(const SessionBus& bus) {
    const auto server = bus.ownerOf("org.freedesktop.Notifications");
    if (!server)
        return {"notifications", missing, "no notification server runs, so no alert is seen"};
    std::string can;
    bool hasActions = false;
    for (const std::string& capability : bus.notificationCapabilities()) {
        can += (can.empty() ? "" : ", ") + capability;
        hasActions |= capability == "actions";
    }
    const std::string detail = owner(*server) + " can: " + (can.empty() ? "nothing" : can);
    return hasActions ? Finding{"notifications", works, detail}
                      : Finding{"notifications", limited, detail + "; alerts have no buttons"};
}

Finding statusArea(const SessionBus& bus) {
    if (const auto watcher = bus.ownerOf("org.kde.StatusNotifierWatcher"))
        return {"status area", works, owner(*watcher)};
    return {"status area", limited,
            "nobody shows status items on the bus; a panel with a tray of X11 may"};
}

Finding portal(const SessionBus& bus) {
    if (const auto service = bus.ownerOf("org.freedesktop.portal.Desktop"))
        return {"desktop portal", works, owner(*service)};
    return {"desktop portal", limited, "not running; shortcuts under Wayland need it"};
}

Finding serviceManager(const SessionBus& bus) {
    if (const auto manager = bus.ownerOf("org.freedesktop.systemd1"))
        return {"service manager", works, owner(*manager)};
    return {"service manager", missing, "no systemd --user, so nobody starts the monitor"};
}

Finding monitorUnit(const SessionBus& bus) {
    const std::string file = bus.unitFileState(kUnit);
    const std::string active = bus.activeState(kUnit);
    if (file.empty())
        return {"monitor unit", missing, std::string(kUnit) + " is not known"};
    const bool runs = file == "enabled" && active == "active";
    return {"monitor unit", runs ? works : limited, file + ", " + active};
}

Finding publishedList(const SessionBus& bus) {
    const std::string file = stateFolder() + "/group.dev.quorvane.zenlot/ports.json";
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0)
        return {"published list", missing, file + ": " + std::strerror(errno)};
    const auto minder = bus.ownerOf("dev.quorvane.zenlot.Monitor");
    if (!minder)
        return {"published list", limited, file + " has no monitor on this bus"};
    return {"published list", works, file + ", by " + owner(*minder)};
}

Finding log() {
    const std::string file = homeFolder() + "/Library/Logs/zenlot-monitor.log";
    struct stat status {};
    if (::stat(file.c_str(), &status) != 0)
        return {"log", missing, file + ": " + std::strerror(errno)};
    if (!S_ISREG(status.st_mode))
        return {"log", missing, file + " is no regular file"};
    if (::access(file.c_str(), W_OK) != 0)
        return {"log", limited, file + " can't be written"};
    return {"log", works, file + ", " + std::to_string(status.st_size) + " bytes"};
}

} // namespace

std::vector<Finding> examineMachine() {
    const SessionBus bus;
    std::vector<Finding> findings{kernelTables(), processEvents(), deadSockets(), refusedBinds()};
    if (bus.failure().empty()) {
        findings.push_back({"session bus", works, "reached"});
        for (const auto look : {notifications, statusArea, portal, serviceManager, monitorUnit})
            findings.push_back(look(bus));
    } else {
        findings.push_back({"session bus", missing,
                            bus.failure() + "; alerts, status item, search and the monitor's "
                                            "registration need it"});
    }
    findings.push_back(publishedList(bus));
    findings.push_back(log());
    return findings;
}

} // namespace zenlot
