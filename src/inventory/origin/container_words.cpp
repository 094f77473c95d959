#include "inventory/origin/container_words.h"

#include "inventory/process_names.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <string_view>

namespace zenlot {
namespace {

using Words = std::span<const std::string>;

// The word behind an option; empty without one.
std::string_view valueOf(Words words, std::string_view option) {
    const auto found = std::ranges::find(words, option);
    if (found == words.end() || std::next(found) == words.end())
        return {};
    return *std::next(found);
}

std::uint16_t portIn(std::string_view text) {
    std::uint16_t port{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    return error == std::errc() && end == text.data() + text.size() ? port : std::uint16_t{0};
}

// pasta's "-t 8080-8081:80-81", "127.0.0.1/8080:80" and lists of them.
std::optional<std::uint16_t> forwardedPort(std::string_view specification, std::uint16_t port) {
    while (!specification.empty()) {
        std::string_view each = specification.substr(0, specification.find(','));
        specification.remove_prefix(std::min(specification.size(), each.size() + 1));
        each.remove_prefix(std::min(each.size(), each.rfind('/') + 1));
        const std::string_view outer = each.substr(0, each.find(':'));
        const std::string_view inner =
            outer.size() == each.size() ? outer : each.substr(outer.size() + 1);
        const std::uint16_t first = portIn(outer.substr(0, outer.find('-')));
        const std::uint16_t last = portIn(outer.substr(outer.find('-') + 1));
        const std::uint16_t innerFirst = portIn(inner.substr(0, inner.find('-')));
        if (first != 0 && innerFirst != 0 && first <= port && port <= last)
            return static_cast<std::uint16_t>(innerFirst + (port - first));
    }
    return std::nullopt;
}

} // namespace

std::optional<PublishedPort> publishedPortOf(Words words, std::uint16_t port) {
    if (words.empty())
        return std::nullopt;
    const std::string program = processNameOf(words.front());
    if (program == "docker-proxy") {
        if (portIn(valueOf(words, "-host-port")) != port)
            return std::nullopt;
        return PublishedPort{"docker", port, portIn(valueOf(words, "-container-port")),
                             IpAddress::parse(valueOf(words, "-container-ip"))};
    }
    if (program == "pasta" || program == "pasta.avx2") {
        for (std::size_t place = 1; place + 1 < words.size(); ++place) {
            if (words[place] != "-t" && words[place] != "--tcp-ports")
                continue;
            if (const auto inner = forwardedPort(words[place + 1], port))
                return PublishedPort{"podman", port, *inner, {}};
        }
        return std::nullopt;
    }
    // Its own arguments say nothing; the port it gets on its standard input.
    if (program == "rootlessport" || program == "containers-rootlessport")
        return PublishedPort{"podman", port, 0, {}};
    return std::nullopt;
}

std::optional<Container> watchedContainer(Words words) {
    if (words.empty())
        return std::nullopt;
    const std::string program = processNameOf(words.front());
    Container container;
    if (program == "conmon") {
        container.engine = "podman";
        container.id = valueOf(words, "-c");
        container.name = valueOf(words, "-n");
    } else if (program.starts_with("containerd-shim")) {
        container.engine = valueOf(words, "-namespace") == "moby" ? "docker" : "containerd";
        container.id = valueOf(words, "-id");
    }
    return container.id.empty() ? std::nullopt : std::optional(container);
}

} // namespace zenlot
