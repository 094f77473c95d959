#include "inventory/origin/bind_obstacle.h"

#include "inventory/process_names.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <map>
#include <string_view>

namespace zenlot {
namespace {

std::uint16_t numberIn(std::string_view text) {
    std::uint16_t number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? number : std::uint16_t{0};
}

BindObstacle::Kind kindOf(const PortUse& use) {
    if (isBoundOnly(use))
        return BindObstacle::Kind::boundOnly;
    return use.state == TcpState::timeWait || use.inode == 0 ? BindObstacle::Kind::timeWait
                                                             : BindObstacle::Kind::connection;
}

} // namespace

bool isBoundOnly(const PortUse& use) {
    return use.state != TcpState::timeWait && use.inode != 0 && use.foreignPort == 0;
}

bool isInPortList(std::string_view list, std::uint16_t port) {
    while (!list.empty()) {
        const std::string_view range = list.substr(0, list.find(','));
        list.remove_prefix(std::min(list.size(), range.size() + 1));
        const std::uint16_t first = numberIn(range.substr(0, range.find('-')));
        const std::uint16_t last = numberIn(range.substr(range.find('-') + 1));
        if (first != 0 && first <= port && port <= last)
            return true;
    }
    return false;
}

std::vector<BindObstacle> bindObstacles(const OriginSources& sources, std::uint16_t port) {
    const std::vector<PortUse> uses = sources.usesOfPort(port);
    std::vector<std::uint64_t> inodes;
    for (const PortUse& use : uses) {
        if (use.inode != 0)
            inodes.push_back(use.inode);
    }
    std::map<std::uint64_t, ProcessId> holders;
    if (!inodes.empty()) {
        for (const ProcessId pid : sources.pids()) {
            for (const std::uint64_t inode : sources.socketsHeldBy(pid, inodes))
                holders.try_emplace(inode, pid);
        }
    }

    std::map<std::pair<BindObstacle::Kind, ProcessId>, BindObstacle> found;
    for (const PortUse& use : uses) {
        const auto holder = holders.find(use.inode);
        const ProcessId pid = holder == holders.end() ? 0 : holder->second;
        const auto [place, isNew] = found.try_emplace({kindOf(use), pid});
        BindObstacle& obstacle = place->second;
        obstacle.remaining =
            std::max(obstacle.remaining, std::chrono::ceil<std::chrono::seconds>(use.remaining));
        if (!isNew) {
            ++obstacle.count;
            continue;
        }
        obstacle.kind = kindOf(use);
        obstacle.foreignPort = use.foreignPort;
        if (const auto glimpse = pid == 0 ? std::nullopt : sources.process(pid)) {
            obstacle.holder = glimpse->process;
            obstacle.holderName = sanitizedUtf8(
                glimpse->executable.empty() ? glimpse->name : processNameOf(glimpse->executable));
        }
    }

    std::vector<BindObstacle> obstacles;
    for (auto& [key, obstacle] : found)
        obstacles.push_back(std::move(obstacle));
    if (isInPortList(sources.reservedPorts(), port))
        obstacles.push_back({.kind = BindObstacle::Kind::reserved});
    if (port < sources.firstUnprivilegedPort())
        obstacles.push_back({.kind = BindObstacle::Kind::privileged});
    return obstacles;
}

} // namespace zenlot
