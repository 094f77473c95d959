#include "background_monitor/written_ports.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <optional>

namespace zenlot {
namespace {

constexpr std::array<std::string_view, 5> kServing{"listen", "serve", ".run", "httpd", "start"};
constexpr std::array<std::string_view, 3> kNaming{"port", "bind", "addr"};
constexpr std::array<std::string_view, 15> kOthers{
    "postgres", "mysql",  "mongo",    "redis",  "amqp",  "kafka", "database", "proxy",
    ".connect", "target", "connect(", "fetch(", "axios", "db_",   "memcache"};
constexpr std::size_t kLongestLine = 2000;
constexpr std::size_t kMostImports = 24;
constexpr std::size_t kMostPorts = 256;

bool isWordCharacter(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

template <std::size_t Count>
bool mentions(std::string_view line, const std::array<std::string_view, Count>& words) {
    return std::ranges::any_of(
        words, [line](std::string_view word) { return line.find(word) != std::string_view::npos; });
}

// A line without its comment, in small letters.
std::string prepared(std::string_view line) {
    std::string text(line.substr(0, kLongestLine));
    std::ranges::transform(text, text.begin(), [](unsigned char character) {
        return static_cast<char>(std::tolower(character));
    });
    const std::size_t first = text.find_first_not_of(" \t");
    if (first != std::string::npos && text[first] == '#')
        return {};
    for (std::size_t slashes = text.find("//"); slashes != std::string::npos;
         slashes = text.find("//", slashes + 2)) {
        if (slashes == 0 || text[slashes - 1] != ':') {
            text.resize(slashes);
            break;
        }
    }
    return text;
}

// What a line speaks of.
enum class Subject : std::uint8_t { nothing, others, naming, serving };

Subject subjectOf(std::string_view line) {
    if (mentions(line, kOthers))
        return Subject::others;
    if (mentions(line, kServing))
        return Subject::serving;
    return mentions(line, kNaming) ? Subject::naming : Subject::nothing;
}

// How likely it is that a number is a port to listen on; 0 for not at all.
int likelihood(Subject subject, char beforeNumber) {
    switch (subject) {
    case Subject::others:
        return 0;
    case Subject::serving:
        return 3;
    case Subject::naming:
        return 2;
    case Subject::nothing:
        break;
    }
    return beforeNumber == ':' ? 1 : 0;
}

// Calls back with every number from 1 to 65535 that stands by itself, and the character before it.
template <typename Call>
void forEachPort(std::string_view line, Call&& call) {
    for (std::size_t place = 0; place < line.size();) {
        if (!isWordCharacter(line[place])) {
            ++place;
            continue;
        }
        std::size_t end = place;
        while (end < line.size() && isWordCharacter(line[end]))
            ++end;
        std::uint16_t number{0};
        const auto [last, error] = std::from_chars(line.data() + place, line.data() + end, number);
        const bool isFraction =
            (place > 0 && line[place - 1] == '.') ||
            (end + 1 < line.size() && line[end] == '.' && isWordCharacter(line[end + 1]));
        if (error == std::errc() && last == line.data() + end && number >= 80 && !isFraction)
            call(number, place > 0 ? line[place - 1] : ' ');
        place = end;
    }
}

// Calls back with every number behind a colon.
template <typename Call>
void forEachColonNumber(std::string_view binary, Call&& call) {
    for (std::size_t colon = binary.find(':'); colon != std::string_view::npos;
         colon = binary.find(':', colon + 1)) {
        std::uint16_t number{0};
        const auto [last, error] =
            std::from_chars(binary.data() + colon + 1, binary.data() + binary.size(), number);
        if (error == std::errc() && binary[colon + 1] != '0')
            call(number);
    }
}

} // namespace

std::vector<WrittenPort> portsInText(std::string_view text) {
    std::vector<WrittenPort> ports;
    while (!text.empty()) {
        const std::string_view raw = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), raw.size() + 1));
        const std::string line = prepared(raw);
        std::optional<Subject> subject; // of a line without numbers nobody asks
        forEachPort(line, [&](std::uint16_t port, char before) {
            if (!subject)
                subject = subjectOf(line);
            const int found = likelihood(*subject, before);
            const auto known = std::ranges::find(ports, port, &WrittenPort::port);
            if (known != ports.end())
                known->likelihood = std::max(known->likelihood, found);
            else if (found != 0 && ports.size() < kMostPorts)
                ports.push_back({port, found});
        });
    }
    return ports;
}

std::vector<std::uint16_t> portsInBinary(std::string_view binary, BinaryKind kind,
                                         std::span<const std::uint16_t> ports) {
    std::vector<std::uint16_t> found;
    if (kind == BinaryKind::program) {
        forEachColonNumber(binary, [&](std::uint16_t number) {
            if (std::ranges::find(ports, number) != ports.end() &&
                std::ranges::find(found, number) == found.end())
                found.push_back(number);
        });
        return found;
    }
    for (const std::uint16_t port : ports) {
        // sipush, the instruction for a number of two bytes; larger ones are four-byte constants.
        const char high = static_cast<char>(port >> 8);
        const char low = static_cast<char>(port & 0xff);
        const std::array<char, 5> constant{3, 0, 0, high, low};
        const std::array<char, 3> instruction{0x11, high, low};
        const auto holds = [binary](const auto& bytes) {
            return binary.find(std::string_view(bytes.data(), bytes.size())) !=
                   std::string_view::npos;
        };
        if (port > 32767 ? holds(constant) : holds(instruction))
            found.push_back(port);
    }
    return found;
}

std::vector<std::string> relativeImports(std::string_view text) {
    std::vector<std::string> files;
    const auto add = [&files](std::string_view file) {
        if (files.size() < kMostImports && !file.empty() && file.size() < 200)
            files.emplace_back(file);
    };
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        // JavaScript and Ruby quote the file; a relative one begins with a dot.
        for (const char quote : {'"', '\''}) {
            const std::size_t begin = line.find(quote);
            const std::size_t end = line.find(quote, begin + 1);
            if (begin == std::string_view::npos || end == std::string_view::npos)
                continue;
            const std::string_view file = line.substr(begin + 1, end - begin - 1);
            if (file.starts_with("./") || file.starts_with("../") ||
                line.starts_with("require_relative"))
                add(file);
        }
        // Python names a module.
        for (const std::string_view keyword : {"from ", "import "}) {
            if (!line.starts_with(keyword))
                continue;
            std::string module(line.substr(keyword.size()));
            module.resize(std::min(module.find_first_of(" ,;\r'\"{"), module.size()));
            module.erase(0, module.find_first_not_of('.'));
            std::ranges::replace(module, '.', '/');
            add(module);
        }
    }
    return files;
}

} // namespace zenlot
