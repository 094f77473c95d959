#include "ctl/command_line.h"

#include "ctl/port_table.h"
#include "inventory/port_lookup.h"

#include <charconv>

namespace zenlot {
namespace {

UsageError usageError(std::string message) {
    return {"zenlotctl: " + std::move(message) + " (see zenlotctl --help)"};
}

UsageError unexpected(std::string_view word) {
    return usageError("unexpected argument '" + terminalText(word) + "'");
}

// Of a command that takes nothing else.
template <typename FormattedCommand>
Command parseFormatted(std::span<const std::string_view> words) {
    FormattedCommand command;
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
    const std::string_view word = words.front();
    CheckCommand command;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), command.port);
    if (error != std::errc() || end != word.data() + word.size() || !isValidPort(command.port))
        return UsageError{checkPortAnswer(0, {})};
    return command;
}

} // namespace

Command parseCommandLine(std::span<const std::string_view> words) {
    if (words.empty())
        return usageError("what should it do?");
    const std::string_view verb = words.front();
    const auto rest = words.subspan(1);
    if (verb == "list")
        return parseFormatted<ListCommand>(rest);
    if (verb == "check")
        return parseCheck(rest);
    if (verb == "doctor")
        return parseFormatted<DoctorCommand>(rest);
    if (verb != "--help" && verb != "-h" && verb != "--version")
        return usageError("unknown command '" + terminalText(verb) + "'");
    if (!rest.empty())
        return unexpected(rest.front());
    return verb == "--version" ? Command{VersionCommand{}} : Command{HelpCommand{}};
}

std::string_view helpText() {
    return "Usage: zenlotctl list [--json]\n"
           "       zenlotctl check PORT\n"
           "       zenlotctl doctor [--json]\n"
           "       zenlotctl --help | --version\n"
           "\n"
           "Tells which process listens on which TCP port.\n"
           "\n"
           "  list          every listening port: port, protocol, process id, user, name and path\n"
           "  list --json   the same as a JSON array of records\n"
           "  check PORT    one sentence on who holds the port\n"
           "  doctor        what of kernel and desktop works here, what does not, and why\n"
           "\n"
           "Processes of other users are named only where the system lets this user see them.\n"
           "Exit status: 0 answered, 1 the answer could not be written, 2 bad usage.\n";
}

} // namespace zenlot
