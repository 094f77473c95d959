// What the command lines of the helpers of container engines say, which everybody may read.
#pragma once

#include "inventory/origin/origin.h"

#include <optional>
#include <span>
#include <string>

namespace zenlot {

// A port that a helper keeps open for a container: docker-proxy says all of it, others less.
struct PublishedPort {
    std::string engine;
    std::uint16_t hostPort{0};
    std::uint16_t innerPort{0};              // 0 when not told
    std::optional<IpAddress> innerAddress{}; // none when not told

    friend bool operator==(const PublishedPort&, const PublishedPort&) = default;
};

// None for programs that are no such helper, and for those that do not tell of the port.
std::optional<PublishedPort> publishedPortOf(std::span<const std::string> commandLine,
                                             std::uint16_t port);

// The container that a program watches over for its engine; none for other programs.
std::optional<Container> watchedContainer(std::span<const std::string> commandLine);

} // namespace zenlot
