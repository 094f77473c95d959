#include "ctl/why_page.h"

#include "inventory/origin/reach.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

namespace zenlot {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kLabelWidth = 13;
constexpr std::size_t kMostAddresses = 3;
constexpr std::size_t kMostOwners = 8;

class Page {
  public:
    void add(std::string_view label, const std::string& value) {
        if (value.empty())
            return;
        text_ += "  ";
        text_ += label;
        text_.append(kLabelWidth - label.size(), ' ');
        text_ += terminalText(value) + '\n';
    }
    void addLine(const std::string& line) { text_ += terminalText(line) + '\n'; }
    void addGap() { text_ += text_.empty() ? "" : "\n"; }
    const std::string& text() const { return text_; }

  private:
    std::string text_;
};

std::string listed(const std::vector<std::string>& words, std::string_view separator = ", ") {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? std::string() : std::string(separator)) + word;
    return text;
}

std::string counted(std::size_t count, const std::string& one, const std::string& many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

std::string processText(const std::string& name, std::int64_t pid) {
    return (name.empty() ? "a process" : name) + " (PID " + std::to_string(pid) + ")";
}

std::string holderText(const Origin& origin, const std::string& user) {
    if (origin.process.pid != 0)
        return processText(origin.processName, origin.process.pid) + ", user " + user;
    if (!origin.processName.empty())
        return origin.processName + ", user " + user;
    return origin.socketUnit ? "the service manager, user " + user
                             : "a process that only user " + user + " may look into";
}

std::string projectText(const Project& project) {
    std::string text = project.name;
    if (project.head == Project::Head::branch)
        text += ", branch " + project.branch;
    else if (project.head == Project::Head::detached)
        text += ", at commit " + project.branch;
    text += ", in " + project.folder;
    return project.isDeleted ? text + ", a deleted folder" : text;
}

std::string containerText(const Container& container) {
    std::string text = container.name.empty() ? container.id.substr(0, 12) : container.name;
    if (text.empty())
        text = "one that can't be told";
    if (!container.engine.empty())
        text += ", of " + container.engine;
    if (!container.image.empty())
        text += ", image " + container.image;
    if (!container.composeService.empty())
        text += ", service " + container.composeService + " of compose project " +
                container.composeProject;
    if (container.innerPort != 0)
        text += ", its port " + std::to_string(container.innerPort);
    return text;
}

std::string unitText(const Unit& unit) {
    return unit.name +
           (unit.manager == Unit::Manager::user ? ", of the user's services" : ", of the system");
}

std::string addressesText(const Origin& origin) {
    std::vector<std::string> texts;
    for (const ListeningSocket& socket : origin.sockets) {
        std::string text = addressText(socket.address);
        if (socket.address.isWildcard() && socket.address.family == AddressFamily::ipv6)
            text += socket.isV6Only ? " (IPv6 only)" : " (IPv4 as well)";
        if (std::ranges::find(texts, text) == texts.end())
            texts.push_back(std::move(text));
    }
    return listed(texts);
}

std::string networkText(const NetworkAddress& address) {
    if (!address.network.empty())
        return "Wi-Fi \"" + address.network + "\"";
    return (address.isWireless ? "Wi-Fi " : "") + address.interface;
}

std::string reachText(const Origin& origin) {
    if (origin.reach == Reach::unknown)
        return {};
    if (origin.reach == Reach::thisMachine)
        return "this machine only";
    std::vector<std::string> texts;
    for (const NetworkAddress& address : origin.reachableAt) {
        if (texts.size() < kMostAddresses)
            texts.push_back(addressText(address.address) + " (" + networkText(address) + ")");
    }
    return "everyone who can reach " +
           (texts.empty() ? std::string("its address") : listed(texts, " or ")) +
           ", unless a firewall stops them";
}

std::string ownersText(const Origin& origin) {
    if (origin.owners.size() < 2)
        return {};
    std::vector<std::string> pids;
    for (const ProcessIdentity& owner : origin.owners) {
        if (pids.size() == kMostOwners) {
            pids.push_back("…");
            break;
        }
        pids.push_back(std::to_string(owner.pid));
    }
    return std::to_string(origin.owners.size()) + " processes: " + listed(pids);
}

std::string leftBehindText(const Origin& origin) {
    std::vector<std::string> reasons;
    for (const LeftBehindReason reason : origin.leftBehind) {
        switch (reason) {
        case LeftBehindReason::folderDeleted:
            reasons.emplace_back("its folder is deleted");
            break;
        case LeftBehindReason::noTerminal:
            reasons.emplace_back("it has no terminal");
            break;
        case LeftBehindReason::starterEnded:
            reasons.emplace_back("what started it has ended");
            break;
        case LeftBehindReason::sessionOver:
            reasons.emplace_back("its session is over");
            break;
        }
    }
    return reasons.empty() ? std::string()
                           : "perhaps: " + listed(reasons) + ", nobody is connected";
}

void addOrigin(Page& page, const Origin& origin, const LoginNameQuery& nameOf) {
    page.add("Held by", holderText(origin, nameOf(std::to_string(origin.user))));
    if (origin.container)
        page.add("Container", containerText(*origin.container));
    if (origin.program != origin.processName)
        page.add("Runs", origin.program);
    if (origin.project)
        page.add("Project", projectText(*origin.project));
    page.add("Command", origin.commandLine);
    if (!origin.project)
        page.add("Folder", origin.workingDirectory);
    page.add("Started by", startersText(origin.startedBy));
    if (origin.unit)
        page.add("Unit", unitText(*origin.unit));
    if (origin.socketUnit && origin.socketUnit != origin.unit)
        page.add("Socket", unitText(*origin.socketUnit));
    page.add("Listens on", addressesText(origin));
    page.add("Reached by", reachText(origin));
    page.add("Shared by", ownersText(origin));
    page.add("Clients", origin.clients == 0 ? "none is connected"
                                            : std::to_string(origin.clients) + " connected");
    page.add("Left behind", leftBehindText(origin));
}

std::string obstacleText(const BindObstacle& obstacle) {
    const std::string holder = obstacle.holder.pid == 0
                                   ? std::string("a process that is not to be seen")
                                   : processText(obstacle.holderName, obstacle.holder.pid);
    switch (obstacle.kind) {
    case BindObstacle::Kind::boundOnly:
        return holder + " has bound it and does not listen; nobody else can have it.";
    case BindObstacle::Kind::connection:
        return holder + " uses it as its own end of " +
               counted(obstacle.count, "connection", "connections") + " to port " +
               std::to_string(obstacle.foreignPort) +
               "; a server that does not set SO_REUSEADDR is refused.";
    case BindObstacle::Kind::timeWait:
        return "The kernel keeps it after " + counted(obstacle.count, "connection", "connections") +
               (obstacle.remaining.count() > 0
                    ? ", " + std::to_string(obstacle.remaining.count()) + " s longer"
                    : std::string()) +
               "; a server that does not set SO_REUSEADDR is refused until then.";
    case BindObstacle::Kind::reserved:
        return "It is on the system's list of reserved ports: nobody gets it by chance, but a "
               "server "
               "that asks for it does.";
    case BindObstacle::Kind::privileged:
        break;
    }
    return "It is a privileged port: only root, and programs that are allowed to, can have it.";
}

Json processJson(const ProcessIdentity& process) {
    return process.pid;
}

Json starterJson(const Starter& starter) {
    return {{"pid", starter.process.pid}, {"name", starter.name}};
}

Json originJson(const Origin& origin) {
    Json json = Json::object();
    const auto addText = [&json](const char* key, const std::string& text) {
        if (!text.empty())
            json[key] = text;
    };
    if (origin.process.pid != 0)
        json["pid"] = processJson(origin.process);
    json["uid"] = origin.user;
    addText("process", origin.processName);
    addText("program", origin.program);
    addText("command", origin.commandLine);
    addText("directory", origin.workingDirectory);
    if (origin.project) {
        Json project{{"name", origin.project->name},
                     {"folder", origin.project->folder},
                     {"deleted", origin.project->isDeleted}};
        if (origin.project->head == Project::Head::branch)
            project["branch"] = origin.project->branch;
        else if (origin.project->head == Project::Head::detached)
            project["commit"] = origin.project->branch;
        json["project"] = std::move(project);
    }
    json["startedBy"] = Json::array();
    for (const Starter& starter : origin.startedBy)
        json["startedBy"].push_back(starterJson(starter));
    for (const auto& [key, unit] :
         {std::pair("unit", &origin.unit), {"socket", &origin.socketUnit}}) {
        if (*unit)
            json[key] = {{"name", (*unit)->name},
                         {"manager", (*unit)->manager == Unit::Manager::user ? "user" : "system"}};
    }
    if (const auto& container = origin.container) {
        Json& told = json["container"] = Json::object();
        for (const auto& [key, text] : {std::pair("engine", &container->engine),
                                        {"id", &container->id},
                                        {"name", &container->name},
                                        {"image", &container->image},
                                        {"composeProject", &container->composeProject},
                                        {"composeService", &container->composeService}}) {
            if (!text->empty())
                told[key] = *text;
        }
        if (container->innerPort != 0)
            told["port"] = container->innerPort;
    }
    json["addresses"] = Json::array();
    for (const ListeningSocket& socket : origin.sockets)
        json["addresses"].push_back(
            {{"address", addressText(socket.address)}, {"ipv6Only", socket.isV6Only}});
    if (origin.reach != Reach::unknown)
        json["reach"] = origin.reach == Reach::network ? "network" : "thisMachine";
    json["owners"] = Json::array();
    for (const ProcessIdentity& owner : origin.owners)
        json["owners"].push_back(processJson(owner));
    json["clients"] = origin.clients;
    json["leftBehind"] = Json::array();
    for (const LeftBehindReason reason : origin.leftBehind) {
        constexpr std::array kNames{"folderDeleted", "noTerminal", "starterEnded", "sessionOver"};
        json["leftBehind"].push_back(kNames.at(static_cast<std::size_t>(reason)));
    }
    return json;
}

Json obstacleJson(const BindObstacle& obstacle) {
    constexpr std::array kNames{"boundOnly", "connection", "timeWait", "reserved", "privileged"};
    Json json{{"kind", kNames.at(static_cast<std::size_t>(obstacle.kind))}};
    if (obstacle.holder.pid != 0) {
        json["pid"] = processJson(obstacle.holder);
        json["process"] = obstacle.holderName;
    }
    if (obstacle.kind == BindObstacle::Kind::timeWait)
        json["seconds"] = obstacle.remaining.count();
    return json;
}

} // namespace

std::string startersText(std::span<const Starter> starters) {
    std::vector<std::string> names;
    for (const Starter& starter : starters) {
        if (starter.kind != ProgramKind::other && starter.kind != ProgramKind::shellScript)
            names.push_back(starter.name);
    }
    if (names.empty() && !starters.empty())
        names.push_back(starters.front().name);
    return listed(names, " ← ");
}

std::string whyPage(const WhyAnswer& answer, const LoginNameQuery& nameOf) {
    Page page;
    const std::string port = "Port " + std::to_string(answer.port);
    if (!answer.origins.empty()) {
        page.addLine(port);
        for (const Origin& origin : answer.origins) {
            page.addGap();
            addOrigin(page, origin, nameOf);
        }
        return page.text();
    }
    page.addLine(port + ": nobody listens on it." +
                 (answer.obstacles.empty() ? " Nothing stands in the way of a server." : ""));
    for (const BindObstacle& obstacle : answer.obstacles)
        page.addLine("  " + obstacleText(obstacle));
    return page.text();
}

std::string whyJson(const WhyAnswer& answer) {
    Json json{{"port", answer.port}, {"origins", Json::array()}, {"obstacles", Json::array()}};
    for (const Origin& origin : answer.origins)
        json["origins"].push_back(originJson(origin));
    for (const BindObstacle& obstacle : answer.obstacles)
        json["obstacles"].push_back(obstacleJson(obstacle));
    return json.dump(2, ' ', true, Json::error_handler_t::replace);
}

} // namespace zenlot
