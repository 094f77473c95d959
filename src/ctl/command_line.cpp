#include "ctl/command_line.h"

#include "ctl/port_table.h"
#include "inventory/port_lookup.h"

#include <charconv>
#include <optional>

namespace zenlot {
namespace {

UsageError usageError(std::string message) {
    return {"zenlotctl: " + std::move(message) + " (see zenlotctl --help)"};
}

UsageError unexpected(std::string_view word) {
    return usageError("unexpected argument '" + terminalText(word) + "'");
}

// None for what is no port.
std::optional<std::int64_t> portIn(std::string_view word) {
    std::int64_t port{};
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), port);
    if (error != std::errc() || end != word.data() + word.size() || !isValidPort(port))
        return std::nullopt;
    return port;
}

Command parseList(std::span<const std::string_view> words) {
    ListCommand command;
    for (const std::string_view word : words) {
        if (word == "--json" && command.listing != Listing::offers)
            command.listing = Listing::json;
        else if (word == "--offers" && command.listing != Listing::json)
            command.listing = Listing::offers;
        else
            return unexpected(word);
    }
    return command;
}

Command parseDoctor(std::span<const std::string_view> words) {
    DoctorCommand command;
    for (const std::string_view word : words) {
        if (word != "--json")
            return unexpected(word);
        command.format = Format::json;
    }
    return command;
}

Command parseCheck(std::span<const std::string_view> words) {
    if (words.empty())
        return usageError("check needs a port number");
    if (words.size() > 1)
        return unexpected(words[1]);
    const auto port = portIn(words.front());
    return port ? Command{CheckCommand{*port}} : Command{UsageError{checkPortAnswer(0, {})}};
}

// A port and maybe one option, in whatever order. None with a message where that is not so.
struct PortAndOption {
    std::int64_t port{0};
    bool hasOption{false};
};

std::variant<PortAndOption, UsageError> parsePort(std::string_view verb, std::string_view option,
                                                  std::span<const std::string_view> words) {
    PortAndOption parsed;
    std::optional<std::int64_t> port;
    for (const std::string_view word : words) {
        if (word == option && !parsed.hasOption) {
            parsed.hasOption = true;
        } else if (port || word.starts_with("--")) {
            return unexpected(word);
        } else if (port = portIn(word); !port) {
            return UsageError{checkPortAnswer(0, {})};
        }
    }
    if (!port)
        return usageError(std::string(verb) + " needs a port number");
    parsed.port = *port;
    return parsed;
}

Command parseWhy(std::span<const std::string_view> words) {
    const auto parsed = parsePort("why", "--json", words);
    if (const auto* error = std::get_if<UsageError>(&parsed))
        return *error;
    const auto& [port, hasOption] = std::get<PortAndOption>(parsed);
    return WhyCommand{port, hasOption ? Format::json : Format::text};
}

Command parseStop(std::span<const std::string_view> words) {
    const auto parsed = parsePort("stop", "--yes", words);
    if (const auto* error = std::get_if<UsageError>(&parsed))
        return *error;
    const auto& [port, hasOption] = std::get<PortAndOption>(parsed);
    return StopCommand{port, hasOption ? Consent::given : Consent::asked};
}

} // namespace

Command parseCommandLine(std::span<const std::string_view> words) {
    if (words.empty())
        return usageError("what should it do?");
    const std::string_view verb = words.front();
    const auto rest = words.subspan(1);
    if (verb == "list")
        return parseList(rest);
    if (verb == "check")
        return parseCheck(rest);
    if (verb == "why")
        return parseWhy(rest);
    if (verb == "stop")
        return parseStop(rest);
    if (verb == "doctor")
        return parseDoctor(rest);
    if (verb != "--help" && verb != "-h" && verb != "--version")
        return usageError("unknown command '" + terminalText(verb) + "'");
    if (!rest.empty())
        return unexpected(rest.front());
    return verb == "--version" ? Command{VersionCommand{}} : Command{HelpCommand{}};
}

std::string_view helpText() {
    return "Usage: zenlotctl list [--json | --offers]\n"
           "       zenlotctl check PORT\n"
           "       zenlotctl why PORT [--json]\n"
           "       zenlotctl stop PORT [--yes]\n"
           "       zenlotctl doctor [--json]\n"
           "       zenlotctl --help | --version\n"
           "\n"
           "Tells which process listens on which TCP port.\n"
           "\n"
           "  list           every listening port: port, protocol, process id, user, name and "
           "path\n"
           "  list --json    the same as a JSON array of records\n"
           "  list --offers  each port once, a tab, and who holds it; for the completion of "
           "shells\n"
           "  check PORT     one sentence on who holds the port\n"
           "  why PORT       which server it is: its project, who started it, whom it lets in; or "
           "why a "
           "free port can't be had\n"
           "  stop PORT      stops the server so that it stays stopped, after a question; --yes "
           "answers "
           "it\n"
           "  doctor         what of kernel and desktop works here, what does not, and why\n"
           "\n"
           "Processes of other users are named only where the system lets this user see them.\n"
           "Exit status: 0 answered, 1 the answer could not be written, 2 bad usage, 3 not "
           "stopped.\n";
}

} // namespace zenlot
