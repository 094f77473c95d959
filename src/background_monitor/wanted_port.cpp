#include "background_monitor/wanted_port.h"

#include <algorithm>
#include <charconv>
#include <string_view>

namespace zenlot {
namespace {

// A port, and the address before it, where one is named.
struct Endpoint {
    std::uint16_t port{0};
    std::string_view host;
};

std::optional<std::uint16_t> portNumber(std::string_view text) {
    std::uint16_t port{0};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size() || text.empty())
        return std::nullopt;
    return port;
}

// "4000", ":4000", "localhost:4000", "[::1]:4000", "tcp://0.0.0.0:4000/path". Of several, which are
// set apart by commas or semicolons, the first.
std::optional<Endpoint> parseEndpoint(std::string_view text) {
    text = text.substr(0, text.find_first_of(",;"));
    if (const std::size_t scheme = text.find("://"); scheme != std::string_view::npos) {
        if (text.starts_with("unix"))
            return std::nullopt;
        text.remove_prefix(scheme + 3);
    }
    text = text.substr(0, text.find_first_of("/?"));
    const std::size_t colon = text.rfind(':');
    const auto port = portNumber(colon == std::string_view::npos ? text : text.substr(colon + 1));
    if (!port)
        return std::nullopt;
    return Endpoint{*port, colon == std::string_view::npos ? "" : text.substr(0, colon)};
}

std::vector<IpAddress> addressesOf(std::string_view host) {
    if (host == "localhost")
        return {*IpAddress::parse("127.0.0.1"), *IpAddress::parse("::1")};
    if (host == "*" || host == "+")
        return {*IpAddress::parse("::")};
    const auto address = IpAddress::parse(host);
    return address ? std::vector{*address} : std::vector<IpAddress>();
}

bool contains(const std::vector<std::string>& list, std::string_view word) {
    return std::ranges::find(list, word) != list.end();
}

// The value of `flag` where `place` of the arguments is that flag: in the same word, behind "=" or
// right after a short flag, or in the next one.
std::optional<std::string_view>
valueOf(std::string_view flag, const std::vector<std::string>& arguments, std::size_t place) {
    const std::string_view word = arguments[place];
    if (!word.starts_with(flag))
        return std::nullopt;
    const std::string_view rest = word.substr(flag.size());
    if (rest.empty())
        return place + 1 < arguments.size() ? std::string_view(arguments[place + 1])
                                            : std::string_view();
    if (rest.front() == '=')
        return rest.substr(1);
    const bool isShort = flag.size() == 2 && flag[1] != '-';
    return isShort && rest.front() >= '0' && rest.front() <= '9' ? std::optional(rest)
                                                                 : std::nullopt;
}

template <typename Accept>
void forEachValue(const std::vector<std::string>& flags, const std::vector<std::string>& arguments,
                  Accept&& accept) {
    for (std::size_t place = 0; place < arguments.size(); ++place) {
        for (const std::string& flag : flags) {
            if (const auto value = valueOf(flag, arguments, place))
                accept(*value);
        }
    }
}

std::optional<Endpoint> endpointInArguments(const Runtime& runtime,
                                            const std::vector<std::string>& arguments) {
    std::optional<Endpoint> found;
    // What is said last counts, as with most tools.
    forEachValue(runtime.flags, arguments, [&found](std::string_view value) {
        if (const auto endpoint = parseEndpoint(value))
            found = endpoint;
    });
    if (found || !runtime.takesPositional)
        return found;
    for (const std::string& word : arguments) {
        if (const auto endpoint = parseEndpoint(word); endpoint && !word.starts_with('-'))
            found = endpoint;
    }
    return found;
}

std::optional<Endpoint> endpointInEnvironment(const Runtime& runtime,
                                              const EnvironmentQuery& environment,
                                              std::string& value) {
    for (const std::string& name : runtime.environment) {
        value = environment(name);
        if (const auto endpoint = parseEndpoint(value))
            return endpoint;
    }
    return std::nullopt;
}

} // namespace

std::optional<WantedPort> wantedPort(const Runtime& runtime, const Invocation& invocation,
                                     const EnvironmentQuery& environment) {
    const std::vector<std::string>& arguments = invocation.arguments;
    const auto word = std::ranges::find_if(
        arguments, [](const std::string& argument) { return !argument.starts_with('-'); });
    const std::string_view firstWord = word == arguments.end() ? "" : std::string_view(*word);
    const auto stands = [&arguments](const std::string& wanted) {
        return contains(arguments, wanted);
    };
    if (!runtime.within.empty() && std::ranges::none_of(runtime.within, stands))
        return std::nullopt;
    if (contains(runtime.without, firstWord))
        return std::nullopt;
    for (const char* question : {"--help", "--version"}) {
        if (contains(arguments, question))
            return std::nullopt;
    }

    WantedPort wanted;
    std::string value; // what the endpoint's host may lie in
    auto endpoint = endpointInArguments(runtime, arguments);
    if (endpoint)
        wanted.source = WantedPort::Source::argument;
    else if ((endpoint = endpointInEnvironment(runtime, environment, value)))
        wanted.source = WantedPort::Source::environment;
    else if (const auto usual = runtime.defaultPort(firstWord)) {
        wanted.source = WantedPort::Source::usual;
        endpoint = Endpoint{*usual, {}};
    } else {
        return runtime.mayNamePortItself ? std::optional(wanted) : std::nullopt;
    }
    if (endpoint->port == 0)
        return std::nullopt;
    wanted.port = endpoint->port;
    wanted.addresses = addressesOf(endpoint->host);
    if (endpoint->host.empty()) {
        forEachValue(runtime.hostFlags, arguments,
                     [&wanted](std::string_view host) { wanted.addresses = addressesOf(host); });
    }
    return wanted;
}

std::string namedConfig(const Runtime& runtime, const Invocation& invocation) {
    std::string config;
    forEachValue(runtime.configFlags, invocation.arguments,
                 [&config](std::string_view value) { config = value; });
    return config;
}

} // namespace zenlot
