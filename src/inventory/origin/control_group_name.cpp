#include "inventory/origin/control_group_name.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <utility>
#include <vector>

namespace zenlot {
namespace {

constexpr std::size_t kContainerIdLength = 64;

bool isContainerId(std::string_view text) {
    return text.size() == kContainerIdLength &&
           text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

std::vector<std::string_view> componentsOf(std::string_view path) {
    std::vector<std::string_view> components;
    while (!path.empty()) {
        const std::string_view component = path.substr(0, path.find('/'));
        if (!component.empty())
            components.push_back(component);
        path.remove_prefix(std::min(path.size(), component.size() + 1));
    }
    return components;
}

// Of "user@1000.service".
std::optional<UserId> userOfManager(std::string_view unit) {
    constexpr std::string_view kPrefix = "user@";
    if (!unit.starts_with(kPrefix) || !unit.ends_with(".service"))
        return std::nullopt;
    UserId user{};
    const auto [end, error] =
        std::from_chars(unit.data() + kPrefix.size(), unit.data() + unit.size(), user);
    return error == std::errc() && *end == '.' ? std::optional(user) : std::nullopt;
}

} // namespace

std::optional<Unit> unitOfControlGroup(std::string_view path) {
    Unit unit;
    for (const std::string_view component : componentsOf(path)) {
        if (const auto user = userOfManager(component)) {
            unit = {Unit::Manager::user, {}, *user};
        } else if (component.ends_with(".scope")) {
            return std::nullopt;
        } else if (component.ends_with(".service") || component.ends_with(".socket")) {
            unit.name = component;
            break; // what lies below is the unit's own
        }
    }
    return unit.name.empty() ? std::nullopt : std::optional(unit);
}

std::optional<Container> containerOfControlGroup(std::string_view path) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 5> kPrefixes{{
        {"docker-", "docker"},
        {"libpod-", "podman"},
        {"cri-containerd-", "containerd"},
        {"crio-", "cri-o"},
        {"nerdctl-", "containerd"},
    }};
    std::string_view parent;
    for (std::string_view component : componentsOf(path)) {
        if (component.ends_with(".scope"))
            component.remove_suffix(std::string_view(".scope").size());
        if (isContainerId(component)) {
            // Without a service manager, Docker makes a folder of its own for its groups.
            Container container;
            container.engine = parent == "docker" ? "docker" : "";
            container.id = component;
            return container;
        }
        for (const auto& [prefix, engine] : kPrefixes) {
            if (component.starts_with(prefix) && isContainerId(component.substr(prefix.size()))) {
                Container container;
                container.engine = engine;
                container.id = component.substr(prefix.size());
                return container;
            }
        }
        parent = component;
    }
    return std::nullopt;
}

} // namespace zenlot
