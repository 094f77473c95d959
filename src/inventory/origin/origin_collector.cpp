#include "inventory/origin/origin_collector.h"

#include "inventory/origin/container_words.h"
#include "inventory/origin/control_group_name.h"
#include "inventory/origin/masked_command.h"
#include "inventory/origin/program_kind.h"
#include "inventory/origin/project_finder.h"
#include "inventory/origin/reach.h"
#include "inventory/process_names.h"

#include <algorithm>
#include <future>
#include <iterator>
#include <string_view>
#include <system_error>
#include <tuple>

namespace zenlot {
namespace {

constexpr int kMostStarters = 32;

// An engine has a helper for each address of a port that it publishes.
void mergeContainers(std::vector<Origin>& origins) {
    for (auto one = origins.begin(); one != origins.end(); ++one) {
        if (!one->container || one->container->id.empty())
            continue;
        const auto others =
            std::stable_partition(std::next(one), origins.end(), [&one](const Origin& other) {
                return !other.container || other.container->id != one->container->id;
            });
        for (auto other = others; other != origins.end(); ++other) {
            std::ranges::copy(other->sockets, std::back_inserter(one->sockets));
            std::ranges::copy(other->owners, std::back_inserter(one->owners));
            one->reach = reachOf(one->sockets);
        }
        origins.erase(others, origins.end());
    }
}

} // namespace

// One collection: what it reads, it reads once.
struct OriginCollector::Look {
    std::vector<ListeningSocket> listening;
    std::map<std::uint16_t, std::size_t> connections;
    std::map<ProcessId, std::optional<ProcessGlimpse>> glimpses;
    std::map<ProcessId, ProgramKind> kinds;
    std::map<ProcessId, bool> helpers; // of containers
    std::map<std::string, std::optional<Project>> projects;
    std::map<std::uint64_t, std::string> groupPaths;
    std::optional<std::vector<RunningContainer>> containers;
    std::optional<std::vector<ProcessId>> pids;
};

const std::optional<ProcessGlimpse>& OriginCollector::glimpseOf(ProcessId pid, Look& look) const {
    const auto [found, isNew] = look.glimpses.try_emplace(pid);
    if (isNew && pid > 0)
        found->second = sources_.process(pid);
    return found->second;
}

ProgramKind OriginCollector::kindOfProcess(ProcessId pid, Look& look) const {
    const auto [found, isNew] = look.kinds.try_emplace(pid);
    if (const auto& glimpse = glimpseOf(pid, look); isNew && glimpse)
        found->second = kindOf(*glimpse);
    return found->second;
}

std::string OriginCollector::starterName(const ProcessGlimpse& starter, ProgramKind kind,
                                         const ProcessGlimpse& process) const {
    switch (kind) {
    case ProgramKind::scriptRunner:
    case ProgramKind::watcher:
        return spokenRunner(starter);
    case ProgramKind::multiplexer: {
        std::string name = starter.name.substr(0, starter.name.find(':'));
        // "socket,process,session": what this multiplexer tells those that it starts.
        const std::string told =
            sources_.environmentVariable(processIdOf(process.process.pid), "TMUX");
        const std::size_t comma = told.rfind(',');
        if (name == "tmux" && comma != std::string::npos)
            name += " session $" + told.substr(comma + 1);
        return sanitizedUtf8(name);
    }
    case ProgramKind::other:
        return spokenCommand(starter);
    default:
        return sanitizedUtf8(starter.executable.empty()
                                 ? starter.name.substr(0, starter.name.find(':'))
                                 : processNameOf(starter.executable));
    }
}

// Up to what people know. What only passes the command on is left out, and a program that consists
// of several processes comes once.
std::vector<Starter> OriginCollector::startersOf(const ProcessGlimpse& process, Look& look) const {
    std::vector<Starter> starters;
    ProcessId pid = process.parent;
    for (int count = 0; pid > 1 && count < kMostStarters; ++count) {
        const std::optional<ProcessGlimpse>& glimpse = glimpseOf(pid, look);
        if (!glimpse)
            break;
        const ProgramKind kind = kindOfProcess(pid, look);
        if (kind == ProgramKind::serviceManager)
            break;
        const bool isLast = kind == ProgramKind::session;
        if (!isLast || starters.empty()) {
            Starter starter{glimpse->process, kind, starterName(*glimpse, kind, process)};
            // An editor or a browser consists of many processes.
            if (starters.empty() || !isNeverStopped(kind) || starters.back().name != starter.name)
                starters.push_back(std::move(starter));
        }
        if (isLast)
            break;
        pid = glimpse->parent;
    }
    return starters;
}

// What does not depend on the port. None for a process that is gone.
std::optional<Origin> OriginCollector::describe(const ProcessIdentity& process, Look& look) const {
    const std::optional<ProcessGlimpse>& glimpse = glimpseOf(processIdOf(process.pid), look);
    if (!glimpse || (process.startTime && glimpse->process != process))
        return std::nullopt;

    Origin origin;
    origin.process = glimpse->process;
    origin.user = glimpse->user;
    origin.processName = sanitizedUtf8(
        glimpse->executable.empty() ? glimpse->name : processNameOf(glimpse->executable));
    origin.kind = kindOfProcess(processIdOf(process.pid), look);
    origin.program = spokenCommand(*glimpse);
    origin.commandLine = maskedCommand(glimpse->commandLine);
    origin.workingDirectory = sanitizedUtf8(glimpse->workingDirectory);
    origin.hasTerminal = glimpse->hasTerminal;
    if (glimpse->isDirectoryDeleted) {
        origin.project = deletedProject(glimpse->workingDirectory);
    } else if (!glimpse->workingDirectory.empty()) {
        const auto [found, isNew] = look.projects.try_emplace(glimpse->workingDirectory);
        if (isNew)
            found->second = findProject(glimpse->workingDirectory);
        origin.project = found->second;
    }
    origin.unit = unitOfControlGroup(glimpse->controlGroup);
    origin.container = containerOfControlGroup(glimpse->controlGroup);
    return origin;
}

const std::string& OriginCollector::groupPath(std::uint64_t id, Look& look) const {
    const auto [found, isNew] = look.groupPaths.try_emplace(id);
    if (isNew && id != 0)
        found->second = sources_.controlGroupPath(id);
    return found->second;
}

// Everybody may know which control group a socket belongs to, and what runs in that group.
void OriginCollector::addUnseenOwner(Origin& origin, Look& look) const {
    if (origin.sockets.empty())
        return;
    origin.user = origin.sockets.front().ownerUid;
    const std::string& path = groupPath(origin.sockets.front().controlGroup, look);
    const std::optional<Unit> unit = unitOfControlGroup(path);
    origin.container = containerOfControlGroup(path);
    if (!unit && !origin.container)
        return; // the group of many others
    origin.unit = unit;
    std::optional<ProcessGlimpse> oldest;
    for (const ProcessId pid : sources_.membersOf(path)) {
        const std::optional<ProcessGlimpse>& member = glimpseOf(pid, look);
        if (member && member->user == origin.user &&
            (!oldest || member->process.startTime < oldest->process.startTime))
            oldest = member;
    }
    if (!oldest)
        return;
    origin.processName = sanitizedUtf8(oldest->name);
    origin.program = spokenCommand(*oldest);
    origin.commandLine = maskedCommand(oldest->commandLine);
}

bool OriginCollector::isHelper(ProcessId pid, Look& look) const {
    if (const auto known = look.glimpses.find(pid); known != look.glimpses.end())
        return known->second && isCalledLikeHelper(known->second->name);
    const auto [found, isNew] = look.helpers.try_emplace(pid);
    if (isNew)
        found->second = isCalledLikeHelper(sources_.nameOf(pid));
    return found->second;
}

// The command line of the helper that keeps the port open, in the same control group.
std::optional<PublishedPort> OriginCollector::publishedPort(const Origin& origin,
                                                            const ProcessGlimpse* glimpse,
                                                            Look& look) const {
    if (glimpse)
        return publishedPortOf(glimpse->commandLine, origin.port);
    if (origin.sockets.empty())
        return std::nullopt;
    const std::string& path = groupPath(origin.sockets.front().controlGroup, look);
    std::vector<ProcessId> members = sources_.membersOf(path);
    if (members.empty()) {
        if (!look.pids)
            look.pids = sources_.pids();
        members = *look.pids;
    }
    for (const ProcessId pid : members) {
        if (!isHelper(pid, look))
            continue;
        const std::optional<ProcessGlimpse>& member = glimpseOf(pid, look);
        if (!member || member->user != origin.user)
            continue;
        if (auto published = publishedPortOf(member->commandLine, origin.port))
            return published;
    }
    return std::nullopt;
}

void OriginCollector::addContainer(Origin& origin, const ProcessGlimpse* glimpse,
                                   Look& look) const {
    const std::optional<PublishedPort> published = publishedPort(origin, glimpse, look);
    if (!published && !origin.container)
        return;
    if (published && !origin.container) {
        origin.container.emplace();
        origin.container->engine = published->engine;
    }
    Container& container = *origin.container;
    if (published) {
        container.innerPort = published->innerPort;
        // What is known of the helper says nothing of what runs in the container.
        origin.project.reset();
        origin.workingDirectory.clear();
        origin.startedBy.clear();
    }

    if (engines_ && !look.containers)
        look.containers = engines_->runningContainers();
    for (const RunningContainer& running :
         look.containers ? *look.containers : std::vector<RunningContainer>()) {
        const auto port = std::ranges::find(running.ports, origin.port,
                                            &std::pair<std::uint16_t, std::uint16_t>::first);
        if (container.id.empty() ? port == running.ports.end()
                                 : container.id != running.container.id)
            continue;
        container = running.container;
        if (port != running.ports.end())
            container.innerPort = port->second;
        else if (published)
            container.innerPort = published->innerPort;
        return;
    }
    nameContainer(origin, published, glimpse, look);
}

// Without an engine that answers: from the processes that belong to it.
void OriginCollector::nameContainer(Origin& origin, const std::optional<PublishedPort>& published,
                                    const ProcessGlimpse* helper, Look& look) const {
    Container& container = *origin.container;
    if (!look.pids)
        look.pids = sources_.pids();
    const std::vector<std::uint64_t> pipes =
        helper && container.id.empty() ? sources_.pipesOf(processIdOf(helper->process.pid))
                                       : std::vector<std::uint64_t>();
    const auto sharesPipe = [&](ProcessId pid) {
        const std::vector<std::uint64_t> others = sources_.pipesOf(pid);
        return std::ranges::find_first_of(pipes, others) != pipes.end();
    };
    std::vector<std::pair<ProcessId, Container>> watched;
    for (const ProcessId pid : *look.pids) {
        const std::optional<ProcessGlimpse>& glimpse = glimpseOf(pid, look);
        if (!glimpse)
            continue;
        if (const auto each = watchedContainer(glimpse->commandLine))
            watched.emplace_back(pid, *each);
        if (!container.id.empty() || !published || !published->innerAddress)
            continue;
        const auto inside = containerOfControlGroup(glimpse->controlGroup);
        if (!inside || !sources_.isInNetworkOf(pid, *published->innerAddress))
            continue;
        container.id = inside->id;
        origin.program = spokenCommand(*glimpse);
    }
    if (container.id.empty() && published && !pipes.empty()) {
        for (const auto& [pid, each] : watched) {
            if (each.engine == published->engine && sharesPipe(pid))
                container.id = each.id;
        }
    }
    for (const auto& [pid, each] : watched) {
        if (each.id != container.id)
            continue;
        container.name = each.name;
        if (container.engine.empty())
            container.engine = each.engine;
    }
}

void OriginCollector::addLeftBehind(Origin& origin, const ProcessGlimpse& glimpse,
                                    Look& look) const {
    if (origin.clients > 0 || origin.container || (origin.unit && !glimpse.isDirectoryDeleted))
        return;
    const std::optional<ProcessGlimpse>& parent = glimpseOf(glimpse.parent, look);
    const bool hasStarterEnded = glimpse.parent <= 1 || !parent ||
                                 kindOfProcess(glimpse.parent, look) == ProgramKind::serviceManager;
    const bool isSessionOver = glimpse.session > 0 && glimpse.session != glimpse.process.pid &&
                               !glimpseOf(glimpse.session, look);
    if (!glimpse.isDirectoryDeleted && !(hasStarterEnded && isSessionOver && !glimpse.hasTerminal))
        return;
    if (glimpse.isDirectoryDeleted)
        origin.leftBehind.push_back(LeftBehindReason::folderDeleted);
    if (!glimpse.hasTerminal)
        origin.leftBehind.push_back(LeftBehindReason::noTerminal);
    if (hasStarterEnded)
        origin.leftBehind.push_back(LeftBehindReason::starterEnded);
    if (isSessionOver)
        origin.leftBehind.push_back(LeftBehindReason::sessionOver);
}

void OriginCollector::addPort(Origin& origin, const ProcessGlimpse* glimpse, Look& look) const {
    origin.reach = reachOf(origin.sockets);
    if (const auto found = look.connections.find(origin.port); found != look.connections.end())
        origin.clients = found->second;
    for (const ListeningSocket& socket : origin.sockets) {
        const auto unit = unitOfControlGroup(groupPath(socket.controlGroup, look));
        if (unit && unit->name.ends_with(".socket"))
            origin.socketUnit = unit;
    }
    addContainer(origin, glimpse, look);
    if (glimpse)
        addLeftBehind(origin, *glimpse, look);
}

// Reading the processes is most of the work of a long list, and each can be read by itself.
void OriginCollector::readAhead(std::span<const PortOwner> rows, Look& look) const {
    constexpr std::size_t kWorthAThread = 64;
    std::vector<ProcessId> pids;
    for (const PortOwner& row : rows) {
        if (row.process.pid > 0)
            pids.push_back(processIdOf(row.process.pid));
    }
    std::ranges::sort(pids);
    pids.erase(std::unique(pids.begin(), pids.end()), pids.end());
    if (pids.size() < kWorthAThread)
        return;
    std::vector<std::optional<ProcessGlimpse>> read(pids.size());
    const auto readSome = [this, &pids, &read](std::size_t begin, std::size_t end) {
        for (std::size_t place = begin; place < end; ++place)
            read[place] = sources_.process(pids[place]);
    };
    const std::size_t middle = pids.size() / 2;
    try {
        const std::future<void> half = std::async(std::launch::async, readSome, 0, middle);
        readSome(middle, pids.size());
        half.wait();
    } catch (const std::system_error&) {
        return; // there is no thread to be had, and one by one works as well
    }
    for (std::size_t place = 0; place < pids.size(); ++place)
        look.glimpses.emplace(pids[place], std::move(read[place]));
}

void OriginCollector::readOrigins(std::span<const PortOwner> rows,
                                  const std::function<void(const Origin&)>& take) const {
    Look look;
    look.listening = sources_.listeningSockets(std::nullopt);
    look.connections = sources_.connections(std::nullopt);
    std::map<std::uint16_t, int> rowsOnPort;
    for (const PortOwner& row : rows)
        ++rowsOnPort[row.port];
    readAhead(rows, look);
    std::ranges::stable_sort(look.listening, {}, &ListeningSocket::port);

    for (const PortOwner& row : rows) {
        std::optional<Origin> described =
            row.process.pid > 0 ? describe(row.process, look) : std::nullopt;
        const ProcessGlimpse* const glimpse =
            described ? &*glimpseOf(processIdOf(row.process.pid), look) : nullptr;
        Origin origin = std::move(described).value_or(Origin());
        origin.port = row.port;
        // One range of both is what clang 14 can't compile with this standard library.
        origin.sockets.assign(
            std::ranges::lower_bound(look.listening, row.port, {}, &ListeningSocket::port),
            std::ranges::upper_bound(look.listening, row.port, {}, &ListeningSocket::port));
        if (rowsOnPort[row.port] > 1)
            keepOwn(origin);
        if (row.process.pid == 0)
            addUnseenOwner(origin, look);
        addPort(origin, glimpse, look);
        take(origin);
    }
}

// Of several servers on one port, each has sockets of its own.
void OriginCollector::keepOwn(Origin& origin) const {
    std::vector<std::uint64_t> inodes;
    for (const ListeningSocket& socket : origin.sockets)
        inodes.push_back(socket.inode);
    const std::vector<std::uint64_t> held =
        sources_.socketsHeldBy(processIdOf(origin.process.pid), inodes);
    if (!held.empty())
        std::erase_if(origin.sockets, [&held](const ListeningSocket& socket) {
            return std::ranges::find(held, socket.inode) == held.end();
        });
}

std::vector<Origin> OriginCollector::originsOnPort(std::uint16_t port) const {
    Look look;
    look.listening = sources_.listeningSockets(port);
    if (look.listening.empty())
        return {};
    look.connections = sources_.connections(port);
    look.pids = sources_.pids();

    std::vector<std::uint64_t> inodes;
    for (const ListeningSocket& socket : look.listening)
        inodes.push_back(socket.inode);
    std::map<ProcessId, std::vector<std::uint64_t>> holders;
    for (const ProcessId pid : *look.pids) {
        std::vector<std::uint64_t> held =
            pid > 1 ? sources_.socketsHeldBy(pid, inodes) : std::vector<std::uint64_t>();
        if (!held.empty())
            holders.emplace(pid, std::move(held));
    }

    std::vector<Origin> origins;
    std::set<std::uint64_t> told;
    for (const Group& group : groupsOf(holders, look)) {
        std::optional<Origin> described = describe({group.holders.front(), {}}, look);
        if (!described)
            continue;
        Origin origin = *std::move(described);
        origin.startedBy = startersOf(*glimpseOf(group.holders.front(), look), look);
        origin.port = port;
        for (const ListeningSocket& socket : look.listening) {
            if (group.inodes.contains(socket.inode))
                origin.sockets.push_back(socket);
        }
        told.insert(group.inodes.begin(), group.inodes.end());
        for (const ProcessId pid : group.holders) {
            if (const auto& glimpse = glimpseOf(pid, look))
                origin.owners.push_back(glimpse->process);
        }
        addPort(origin, &*glimpseOf(group.holders.front(), look), look);
        origins.push_back(std::move(origin));
    }

    std::map<std::pair<UserId, std::uint64_t>, Origin> unseen;
    for (const ListeningSocket& socket : look.listening) {
        if (!told.contains(socket.inode))
            unseen[{socket.ownerUid, socket.controlGroup}].sockets.push_back(socket);
    }
    for (auto& [owner, origin] : unseen) {
        origin.port = port;
        addUnseenOwner(origin, look);
        addPort(origin, nullptr, look);
        origins.push_back(std::move(origin));
    }
    mergeContainers(origins);
    addReachableAddresses(origins);
    return origins;
}

void OriginCollector::addReachableAddresses(std::vector<Origin>& origins) const {
    if (std::ranges::find(origins, Reach::network, &Origin::reach) == origins.end())
        return;
    std::vector<NetworkAddress> addresses = sources_.networkAddresses();
    std::map<std::string, std::string> names;
    for (NetworkAddress& each : addresses) {
        if (!networks_ || !each.isWireless)
            continue;
        const auto [name, isNew] = names.try_emplace(each.interface);
        if (isNew)
            name->second = sanitizedUtf8(networks_->nameOf(each.interface));
        each.network = name->second;
    }
    for (Origin& origin : origins) {
        std::ranges::copy_if(addresses, std::back_inserter(origin.reachableAt),
                             [&origin](const NetworkAddress& each) {
                                 return std::ranges::any_of(
                                     origin.sockets, [&each](const ListeningSocket& socket) {
                                         return overlaps(each.address, socket);
                                     });
                             });
    }
}

// Those that share a socket are one server, and so are those that one process has started on the
// same port (SO_REUSEPORT). The one that started the others comes first.
std::vector<OriginCollector::Group>
OriginCollector::groupsOf(const std::map<ProcessId, std::vector<std::uint64_t>>& holders,
                          Look& look) const {
    const auto belongTogether = [&](const Group& group, ProcessId pid,
                                    const std::vector<std::uint64_t>& inodes) {
        if (std::ranges::any_of(
                inodes, [&group](std::uint64_t inode) { return group.inodes.contains(inode); }))
            return true;
        const auto& one = glimpseOf(pid, look);
        return one && std::ranges::any_of(group.holders, [&](ProcessId member) {
                   const auto& other = glimpseOf(member, look);
                   return other && (other->parent == pid || one->parent == member ||
                                    (one->parent == other->parent && one->parent > 1 &&
                                     one->commandLine == other->commandLine));
               });
    };
    std::vector<Group> groups;
    for (const auto& [pid, inodes] : holders) {
        Group merged;
        merged.holders.push_back(pid);
        merged.inodes.insert(inodes.begin(), inodes.end());
        for (auto group = groups.begin(); group != groups.end();) {
            if (!belongTogether(*group, pid, inodes)) {
                ++group;
                continue;
            }
            merged.holders.insert(merged.holders.end(), group->holders.begin(),
                                  group->holders.end());
            merged.inodes.merge(group->inodes);
            group = groups.erase(group);
        }
        groups.push_back(std::move(merged));
    }
    for (Group& group : groups) {
        const auto seniority = [&](ProcessId pid) {
            const auto& glimpse = glimpseOf(pid, look);
            const bool isChild =
                glimpse && std::ranges::find(group.holders, glimpse->parent) != group.holders.end();
            return std::tuple(!glimpse, isChild,
                              glimpse ? glimpse->process.startTime : std::nullopt, pid);
        };
        std::ranges::sort(group.holders, {}, seniority);
    }
    return groups;
}

} // namespace zenlot
