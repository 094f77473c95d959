#include "background_monitor/port_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>

namespace zenlot {
namespace {

constexpr std::array<std::string_view, 46> kOthers{
    "postgres",   "mysql",     "mariadb",   "mongo",   "redis",      "amqp",     "rabbit",
    "kafka",      "bootstrap", "broker",    "zookeep", "database",   "db_",      "db.",
    "datasource", "memcache",  "elastic",   "smtp",    "mail",       "proxy",    "target",
    "upstream",   "remote",    "peer",      "client",  "axios",      "connect",  "statsd",
    "sentry",     "jaeger",    "otel",      "otlp",    "ldap",       "consul",   "vault",
    "nats",       "inspect",   "debugger",  "sslport", "iisexpress", "shutdown", "requests.",
    "urlopen",    "influx",    "cassandra", "s3_"};

// What begins like one of them and is about the program itself, as is what takes care of its
// clients.
constexpr std::array<std::string_view, 5> kOwnDespite{"connector", "clientport", "client_handler",
                                                      "clienthandler", "client_connected"};
constexpr std::array<std::string_view, 4> kCaring{"handle", "on_", "serve_", "accept"};

constexpr std::array<std::string_view, 6> kListening{"port", "listen", "addr",
                                                     "bind", "http",   "serve"};

constexpr std::size_t kLongestName = 60;

constexpr std::array<std::string_view, 7> kOtherSockets{
    "unix:", "unix@", "--uds", "--unix-socket", "--unixsocket", "fd://", "--fd"};

template <std::size_t Count>
bool holdsAny(std::string_view text, const std::array<std::string_view, Count>& words) {
    return std::ranges::any_of(
        words, [text](std::string_view word) { return text.find(word) != std::string_view::npos; });
}

std::optional<std::uint16_t> portNumber(std::string_view text) {
    std::uint16_t port{0};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    if (error != std::errc() || end != text.data() + text.size() || text.empty())
        return std::nullopt;
    return port;
}

} // namespace

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

std::string_view publishedEndpoint(std::string_view text) {
    const std::size_t inner = text.rfind(':');
    return inner == std::string_view::npos ? std::string_view() : text.substr(0, inner);
}

std::vector<IpAddress> addressesOf(std::string_view host) {
    if (host == "localhost")
        return {*IpAddress::parse("127.0.0.1"), *IpAddress::parse("::1")};
    if (host == "*" || host == "+")
        return {*IpAddress::parse("::")};
    const auto address = IpAddress::parse(host);
    return address ? std::vector{*address} : std::vector<IpAddress>();
}

std::string inSmallLetters(std::string_view text) {
    std::string small(text);
    std::ranges::transform(small, small.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    return small;
}

bool speaksOfOthers(std::string_view text) {
    return std::ranges::any_of(kOthers, [text](std::string_view word) {
        for (std::size_t place = text.find(word); place != std::string_view::npos;
             place = text.find(word, place + 1)) {
            const auto isOwn = [rest = text.substr(place)](std::string_view own) {
                return rest.starts_with(own);
            };
            // `handle_ws_client`
            const std::string_view before = text.substr(0, place);
            const std::string_view name = before.substr(before.find_last_of(" (,.:=\t") + 1);
            const auto caresFor = [name](std::string_view caring) {
                return name.starts_with(caring);
            };
            const bool isCared = word == "client" && std::ranges::any_of(kCaring, caresFor);
            if (!isCared && std::ranges::none_of(kOwnDespite, isOwn))
                return true;
        }
        return false;
    });
}

bool speaksOfListening(std::string_view name) {
    return holdsAny(name, kListening);
}

std::optional<std::string_view> tellingValue(const std::vector<std::string>& arguments,
                                             std::size_t place) {
    const std::string_view word = arguments[place];
    // An address with its port behind what mostly stands for "listen", "address" or "bind".
    if ((word == "-l" || word == "-a" || word == "-b") && place + 1 < arguments.size()) {
        const auto endpoint = parseEndpoint(arguments[place + 1]);
        if (endpoint && arguments[place + 1].find(':') != std::string::npos)
            return arguments[place + 1];
    }
    // "TCP-LISTEN:8080,fork"
    const std::size_t colon = word.find(':');
    if (colon < kLongestName && inSmallLetters(word.substr(0, colon)).ends_with("-listen"))
        return word.substr(colon + 1);
    const std::size_t equals = word.find('=');
    const std::string name = inSmallLetters(word.substr(0, equals));
    // "--listen-client-urls" is about listening, whoever is to come.
    const bool isPlain = name.find("listen") != std::string::npos;
    if (name.size() > kLongestName || !speaksOfListening(name) ||
        (speaksOfOthers(name) && !isPlain))
        return std::nullopt;
    std::string_view value;
    if (equals != std::string_view::npos)
        value = word.substr(equals + 1);
    else if (word.starts_with('-') && place + 1 < arguments.size())
        value = arguments[place + 1];
    const auto endpoint = parseEndpoint(value);
    const bool isPort = endpoint && (endpoint->port >= kLowestPort || name.ends_with("port"));
    return isPort ? std::optional(value) : std::nullopt;
}

bool namesOtherSocket(std::string_view word) {
    return std::ranges::any_of(kOtherSockets, [word](std::string_view beginning) {
        const std::size_t value = word.find('=');
        return word.starts_with(beginning) ||
               (value != std::string_view::npos && word.substr(value + 1).starts_with(beginning));
    });
}

} // namespace zenlot
