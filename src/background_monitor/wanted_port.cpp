#include "background_monitor/wanted_port.h"

#include "background_monitor/port_text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace zenlot {
namespace {

// Words that say of a command that it builds, tests or tidies, and serves nothing.
constexpr std::array<std::string_view, 48> kNotServing{
    "lint",           "test",      "tests",      "install",
    "build",          "check",     "format",     "fmt",
    "compile",        "clean",     "publish",    "migrate",
    "makemigrations", "generate",  "init",       "create",
    "typecheck",      "eslint",    "tsc",        "prettier",
    "jest",           "vitest",    "mocha",      "ava",
    "pytest",         "unittest",  "tox",        "mypy",
    "ruff",           "black",     "flake8",     "pylint",
    "rspec",          "rubocop",   "rake",       "phpunit",
    "composer",       "pip",       "npm",        "npm-cli",
    "npx-cli",        "yarn",      "pnpm",       "rollup",
    "esbuild-build",  "stylelint", "playwright", "cypress"};

// Tools that build, unless they are told to go on and serve.
constexpr std::array<std::string_view, 2> kTaskRunners{"rake", "rollup"};
constexpr std::array<std::string_view, 9> kServingTasks{
    "serve", "server", "start", "dev", "run", "watch", "-w", "--watch", "preview"};

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

// Of a program that no row knows: an option, a property or an assignment whose name speaks of
// listening, such as --listen-port, -Dhttp.port= and port=. Of several that say different things
// nobody knows which one counts.
std::optional<Endpoint> endpointInTellingWords(const std::vector<std::string>& arguments) {
    std::optional<Endpoint> found;
    for (std::size_t place = 0; place < arguments.size(); ++place) {
        const auto value = tellingValue(arguments, place);
        const auto endpoint = value ? parseEndpoint(*value) : std::nullopt;
        if (!endpoint)
            continue;
        if (found && found->port != endpoint->port)
            return std::nullopt;
        found = endpoint;
    }
    return found;
}

std::optional<Endpoint> endpointInArguments(const Runtime& runtime,
                                            const std::vector<std::string>& arguments) {
    std::optional<Endpoint> found;
    // What is said last counts, as with most tools.
    forEachValue(runtime.flags, arguments, [&found, &runtime](std::string_view value) {
        if (runtime.publishesPorts)
            value = publishedEndpoint(value);
        if (const auto endpoint = parseEndpoint(value))
            found = endpoint;
    });
    if (runtime.takesPositional) {
        for (std::size_t place = 0; !found && place < arguments.size(); ++place) {
            // Where it is passed on to comes later, and a small number is an option's.
            const auto endpoint = parseEndpoint(arguments[place]);
            if (endpoint && (endpoint->port == 0 || endpoint->port >= kLowestPort))
                found = endpoint;
        }
    }
    return found || !runtime.mayNamePortItself ? found : endpointInTellingWords(arguments);
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

// "test:unit" is a test as well.
bool isNotServing(std::string_view word) {
    word = word.substr(0, word.find(':'));
    return std::ranges::find(kNotServing, word) != kNotServing.end();
}

// Whether one that runs tasks is told to run one that serves.
bool isToldToServe(std::string_view tool, const std::vector<std::string>& arguments) {
    return isOneOf(tool, kTaskRunners) &&
           std::ranges::any_of(arguments, [](const std::string& word) {
               return isOneOf(word.substr(0, word.find(':')), kServingTasks);
           });
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
    const bool isKnownToServe = !runtime.within.empty();
    // A script of the user's own may be called as it likes; a module is called by its name.
    const bool isInstalled = invocation.genericTool.empty() || invocation.script == invocation.tool;
    if (!isKnownToServe && !isToldToServe(invocation.tool, arguments) &&
        (isNotServing(firstWord) || (isInstalled && isNotServing(invocation.tool))))
        return std::nullopt;

    WantedPort wanted;
    std::string value; // what the endpoint's host may lie in
    auto endpoint = endpointInArguments(runtime, arguments);
    if (!endpoint)
        endpoint = endpointInArguments(runtime, invocation.inherited);
    if (endpoint)
        wanted.source = WantedPort::Source::argument;
    else if (std::ranges::any_of(arguments, namesOtherSocket))
        return std::nullopt;
    else if (!runtime.mayNamePortItself &&
             (endpoint = endpointInEnvironment(runtime, environment, value)))
        wanted.source = WantedPort::Source::environment;
    else if (const auto usual = runtime.defaultPort(firstWord)) {
        wanted.source = WantedPort::Source::usual;
        endpoint = Endpoint{*usual, {}};
    } else {
        const bool mayBeWritten =
            runtime.mayNamePortItself || !runtime.configs.empty() || !runtime.configFlags.empty();
        return mayBeWritten ? std::optional(wanted) : std::nullopt;
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
