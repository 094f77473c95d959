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
        return parseList(rest);
    if (verb == "check")
        return parseCheck(rest);
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
           "  doctor         what of kernel and desktop works here, what does not, and why\n"
           "\n"
           "Processes of other users are named only where the system lets this user see them.\n"
           "Exit status: 0 answered, 1 the answer could not be written, 2 bad usage.\n";
}

} // namespace zenlot
