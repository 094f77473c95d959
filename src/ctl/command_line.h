// What the words after `zenlotctl` ask for.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace zenlot {

enum class Format : std::uint8_t { text, json };

// What `list` says of the ports: all that is known, or a line for each that a shell can offer.
enum class Listing : std::uint8_t { text, json, offers };

struct ListCommand {
    Listing listing{Listing::text};
};

struct DoctorCommand {
    Format format{Format::text};
};

struct CheckCommand {
    std::int64_t port{0};
};

struct WhyCommand {
    std::int64_t port{0};
    Format format{Format::text};
};

// Who is not asked has to say so beforehand.
enum class Consent : std::uint8_t { asked, given };

struct StopCommand {
    std::int64_t port{0};
    Consent consent{Consent::asked};
};

struct HelpCommand {};
struct VersionCommand {};

// The words make no sense; the message is one line for the person who typed them.
struct UsageError {
    std::string message;
};

using Command = std::variant<ListCommand, CheckCommand, WhyCommand, StopCommand, DoctorCommand,
                             HelpCommand, VersionCommand, UsageError>;

// `words` are the arguments without the program's own name.
Command parseCommandLine(std::span<const std::string_view> words);

// What --help prints.
std::string_view helpText();

} // namespace zenlot
