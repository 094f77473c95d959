#include "background_monitor/written_ports.h"

#include "background_monitor/port_text.h"
#include "background_monitor/settings_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <map>

namespace zenlot {
namespace {

constexpr std::array<std::string_view, 8> kServing{"listen", "serve(", "server(", "server.new",
                                                   ".run",   "httpd",  "run_app", "socket-bind"};
constexpr std::array<std::string_view, 9> kNaming{"port", "bind",  "addr",   "listen", "serve",
                                                  ".run", "httpd", "daemon", "start"};
constexpr std::array<std::string_view, 4> kAsking{"fetch(", "curl", ".get(\"http", "open_uri"};
constexpr std::array<std::string_view, 7> kArguments{
    "argv", "os.args", "flag.", "env::args", "commandargs", ".option(", "add_argument("};
// What else is counted in numbers as large as ports.
constexpr std::array<std::string_view, 12> kCounting{"timeout", "interval", "delay",  "sleep",
                                                     "millis",  "_ms",      "second", "limit",
                                                     "size",    "max",      "length", "age"};
constexpr std::uint16_t kLowestOfDevelopers = 1000;
constexpr std::size_t kLongestLine = 2000;
constexpr std::size_t kMostNames = 64;
constexpr std::size_t kShortestName = 2;
constexpr int kMostLinesOfCall = 8;
// So far from the words that tell about it a number stands in a manual.
constexpr std::size_t kVicinity = 120;
constexpr std::size_t kMostImports = 24;
constexpr std::size_t kMostSites = 256;

bool isWordCharacter(char character) {
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

bool isCapital(char character) {
    return character >= 'A' && character <= 'Z';
}

template <std::size_t Count>
bool mentions(std::string_view line, const std::array<std::string_view, Count>& words) {
    return std::ranges::any_of(
        words, [line](std::string_view word) { return line.find(word) != std::string_view::npos; });
}

// Whether "//" stands between a variable with its sigil and what counts where that is not set.
bool isPerlsOr(std::string_view line, std::size_t slashes) {
    std::size_t end = slashes;
    while (end > 0 && line[end - 1] == ' ')
        --end;
    std::size_t start = end;
    while (start > 0 && (isWordCharacter(line[start - 1]) || line[start - 1] == '{' ||
                         line[start - 1] == '}' || line[start - 1] == '\''))
        --start;
    return start < end && start > 0 && line[start - 1] == '$';
}

// A line without its comment.
std::string_view withoutComment(std::string_view line) {
    line = line.substr(0, kLongestLine);
    const std::size_t first = line.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    const std::string_view beginning = line.substr(first);
    if ((beginning.front() == '#' && !beginning.starts_with("#:") &&
         !beginning.starts_with("#define")) ||
        beginning.starts_with("* ") || beginning.starts_with("-- ") ||
        beginning.starts_with(";;") || beginning.starts_with("%%"))
        return {};
    for (std::size_t slashes = line.find("//"); slashes != std::string_view::npos;
         slashes = line.find("//", slashes + 2)) {
        const bool isUrl = slashes > 0 && line[slashes - 1] == ':';
        if (!isUrl && !isPerlsOr(line, slashes))
            return line.substr(0, slashes);
    }
    const std::size_t hash = line.find(" # ");
    return line.substr(0, hash);
}

// "host=127.0.0.1 port=5432": in one value, and no arguments of a call.
bool isConnectionString(std::string_view line) {
    const std::size_t host = line.find("host=");
    const std::size_t port = line.find(" port=", host);
    return host != std::string_view::npos && port != std::string_view::npos &&
           line.substr(host, port - host).find_first_of(",(") == std::string_view::npos;
}

// Whether a line, in small letters, asks another server for something. Ruby's ENV.fetch does not.
bool asksOthers(std::string_view line) {
    if (speaksOfOthers(line) || isConnectionString(line))
        return true;
    return std::ranges::any_of(kAsking, [line](std::string_view word) {
        const std::size_t place = line.find(word);
        if (place == std::string_view::npos)
            return false;
        // Ruby asks its environment so, and a server may call its own function like that.
        const bool isEnvironment = place >= 4 && line.substr(place - 4, 4) == "env.";
        const std::size_t end = line.find(')', place);
        const std::size_t next =
            end == std::string_view::npos ? end : line.find_first_not_of(' ', end + 1);
        const bool isDefinition = next != std::string_view::npos && line[next] == '{';
        return !isEnvironment && !isDefinition;
    });
}

// Whether something on the line, in small letters, is called just "port".
bool namesPlainPort(std::string_view line) {
    for (std::size_t place = line.find("port"); place != std::string_view::npos;
         place = line.find("port", place + 1)) {
        const bool begins = place == 0 || !isWordCharacter(line[place - 1]) ||
                            (place >= 5 && line.substr(place - 5, 5) == "local");
        const std::size_t end = place + 4;
        if (begins && (end == line.size() || !isWordCharacter(line[end])))
            return true;
    }
    return false;
}

// A line in small letters without what stands in quotes as a URL: `{Port: 80, DSN: "db://..."}`.
std::string withoutUrls(std::string line) {
    for (std::size_t scheme = line.find("://"); scheme != std::string::npos;
         scheme = line.find("://", scheme)) {
        const std::size_t start = line.find_last_of("\"'`", scheme);
        const std::size_t end = line.find_first_of("\"'`", scheme);
        if (start == std::string::npos || end == std::string::npos)
            return line;
        line.erase(start, end - start + 1);
        scheme = start;
    }
    return line;
}

int likelihoodOf(std::string_view line) {
    if (asksOthers(line))
        return 0;
    if (mentions(line, kServing))
        return 4;
    if (namesPlainPort(line) || line.find("://0.0.0.0:") != std::string_view::npos)
        return 3;
    return mentions(line, kNaming) ? 2 : 0;
}

// Calls back with every word of letters, digits and underscores, and where it begins.
template <typename Call>
void forEachWord(std::string_view line, Call&& call) {
    for (std::size_t place = 0; place < line.size();) {
        if (!isWordCharacter(line[place])) {
            ++place;
            continue;
        }
        std::size_t end = place;
        while (end < line.size() && isWordCharacter(line[end]))
            ++end;
        call(line.substr(place, end - place), place);
        place = end;
    }
}

// Calls back with every number from 80 to 65535 that stands by itself, and where it stands.
template <typename Call>
void forEachPort(std::string_view line, Call&& call) {
    forEachWord(line, [&](std::string_view word, std::size_t place) {
        const std::size_t end = place + word.size();
        std::uint16_t number{0};
        const auto [last, error] = std::from_chars(word.data(), word.data() + word.size(), number);
        // Rust writes the type behind a number.
        const std::string_view ending = word.substr(static_cast<std::size_t>(last - word.data()));
        const bool isWhole = ending.empty() || ending == "u16" || ending == "_u16" ||
                             ending == "i32" || ending == "L";
        const bool isFraction =
            (place > 0 && line[place - 1] == '.') ||
            (end + 1 < line.size() && line[end] == '.' && isDigit(line[end + 1]));
        if (error == std::errc() && isWhole && number >= 80 && !isFraction)
            call(number, place);
    });
}

// What is assigned to the name that ends there: up to the end of the value, or of the brackets that
// it stands in. Empty for a block.
std::string_view valueBehind(std::string_view line, std::size_t end) {
    std::string_view rest = line.substr(end);
    const auto skip = [&rest](std::string_view characters) {
        rest.remove_prefix(std::min(rest.find_first_not_of(characters), rest.size()));
    };
    skip("\"' ");
    const bool isAssigned = (rest.starts_with(":") && !rest.starts_with("://")) ||
                            (rest.starts_with("=") && !rest.starts_with("=="));
    if (!isAssigned)
        return {};
    skip(":=> ");
    if (rest.starts_with("{"))
        return {};
    if (rest.starts_with("(") || rest.starts_with("["))
        return rest.substr(0, rest.find_first_of(")]"));
    // `flag.String("addr", ":80", "where")`
    std::size_t length = 0;
    for (int depth = 0; length < rest.size(); ++length) {
        const char character = rest[length];
        depth += character == '(' ? 1 : character == ')' ? -1 : 0;
        if (depth <= 0 && std::string_view(",;}").find(character) != std::string_view::npos)
            break;
    }
    return rest.substr(0, length);
}

// Nobody is asked for anything there: it is where to listen.
bool isOfAnyAddress(std::string_view host) {
    return host.starts_with("0.0.0.0:") || host.starts_with("[::]:");
}

// Whether the number at that place is the port in somebody's URL.
bool isInUrl(std::string_view line, std::size_t place) {
    const std::size_t scheme = line.substr(0, place).rfind("://");
    return scheme != std::string_view::npos && !isOfAnyAddress(line.substr(scheme + 3)) &&
           line.substr(scheme, place - scheme).find_first_of(" \t\"'`,") == std::string_view::npos;
}

// Whether the URLs on the line say where to listen, as in `app.Run("http://localhost:5000")`.
bool listensByUrl(std::string_view line) {
    const std::string small = inSmallLetters(line);
    constexpr std::array<std::string_view, 5> kListeningByUrl{"listen", "bind", ".run", "urls",
                                                              "daemon"};
    return mentions(small, kListeningByUrl);
}

// The addresses on a line that are written as numbers, with or without a port behind them.
std::vector<IpAddress> addressesIn(std::string_view line) {
    constexpr std::string_view kCharacters = "0123456789abcdefABCDEF:.";
    std::vector<IpAddress> addresses;
    for (std::size_t place = line.find_first_of(kCharacters); place != std::string_view::npos;) {
        const std::size_t end = std::min(line.find_first_not_of(kCharacters, place), line.size());
        std::string_view word = line.substr(place, end - place);
        if (std::ranges::count(word, '.') == 3)
            word = word.substr(0, word.find(':'));
        if (std::ranges::count(word, '.') == 3 || std::ranges::count(word, ':') >= 2) {
            if (const auto address = IpAddress::parse(word))
                addresses.push_back(*address);
        }
        place = line.find_first_of(kCharacters, end);
    }
    return addresses;
}

// Whether what stands before the number at that place is called just "port".
bool isValueOfPort(std::string_view line, std::size_t place) {
    std::size_t end = place;
    while (end > 0 && std::string_view(" :=>(\"'").find(line[end - 1]) != std::string_view::npos)
        --end;
    std::size_t start = end;
    while (start > 0 && isWordCharacter(line[start - 1]))
        --start;
    return inSmallLetters(line.substr(start, end - start)) == "port";
}

// Whether the colon ends the host of a URL, as in "postgres://ada@localhost:5432".
bool isBehindScheme(std::string_view binary, std::size_t colon) {
    constexpr std::size_t kLongestHost = 80;
    const std::size_t from = colon - std::min(colon, kLongestHost);
    const std::string_view before = binary.substr(from, colon - from);
    // "ada:secret@tcp(localhost:3306)/shop"
    const std::size_t bracket = before.rfind("tcp(");
    if (bracket != std::string_view::npos &&
        before.find_first_of(" )\"'", bracket) == std::string_view::npos)
        return true;
    const std::size_t scheme = before.rfind("://");
    return scheme != std::string_view::npos &&
           std::ranges::all_of(before.substr(scheme + 3), [](char character) {
               return isWordCharacter(character) || character == '.' || character == '-' ||
                      character == '@' || character == ':';
           });
}

// Calls back with every number behind a colon.
template <typename Call>
void forEachColonNumber(std::string_view binary, Call&& call) {
    for (std::size_t colon = binary.find(':'); colon != std::string_view::npos;
         colon = binary.find(':', colon + 1)) {
        std::uint16_t number{0};
        const auto [last, error] =
            std::from_chars(binary.data() + colon + 1, binary.data() + binary.size(), number);
        if (error == std::errc() && binary[colon + 1] != '0' && !isBehindScheme(binary, colon))
            call(number);
    }
}

void addOnce(auto& list, const auto& value) {
    if (std::ranges::find(list, value) == list.end())
        list.push_back(value);
}

} // namespace

std::vector<PortSite> portSites(std::string_view text) {
    std::vector<PortSite> sites;
    forEachLine(text, [&sites](std::string_view raw) {
        const std::string_view line = withoutComment(raw);
        PortSite site;
        // Of a line without numbers and variables nobody asks what it is about.
        site.variables = variablesIn(line);
        std::vector<std::uint16_t> direct;
        forEachPort(line, [&](std::uint16_t port, std::size_t place) {
            if (isInUrl(line, place) && !listensByUrl(line))
                return;
            // A smaller number is how many may wait, or the answer's state.
            const bool isUsual = port >= kLowestOfDevelopers || port == 80 || port == 443;
            if (!isUsual)
                return;
            addOnce(site.ports, port);
            if (isValueOfPort(line, place))
                addOnce(direct, port);
        });
        // Of several numbers those that are called "port" themselves.
        if (!direct.empty())
            site.ports = direct;
        const bool isAboutNothing = site.variables.empty() && site.ports.empty();
        const std::string small = inSmallLetters(line);
        site.readsArguments = mentions(small, kArguments);
        if ((isAboutNothing && !site.readsArguments) || sites.size() >= kMostSites)
            return;
        site.likelihood = likelihoodOf(direct.empty() ? small : withoutUrls(small));
        site.addresses = addressesIn(line);
        if (site.likelihood != 0)
            sites.push_back(std::move(site));
    });
    return sites;
}

std::vector<std::uint16_t> mentionedPorts(std::string_view text,
                                          std::span<const std::uint16_t> ports) {
    std::vector<std::uint16_t> mentioned;
    forEachLine(text, [&](std::string_view raw) {
        const std::string_view line = withoutComment(raw);
        std::string small; // of a line without such numbers nobody asks what it is about
        forEachPort(line, [&](std::uint16_t port, std::size_t place) {
            if (std::ranges::find(ports, port) == ports.end())
                return;
            if (small.empty())
                small = inSmallLetters(line);
            const bool isAddress = place > 0 && line[place - 1] == ':' && !isInUrl(line, place);
            const bool isServing = mentions(small, kServing);
            // Its own port counts whatever else the line speaks of.
            const bool isOwn =
                isValueOfPort(line, place) && (isServing || !asksOthers(withoutUrls(small)));
            if (isOwn || (!asksOthers(small) && (isAddress || mentions(small, kNaming)) &&
                          (!isInUrl(line, place) || isServing)))
                addOnce(mentioned, port);
        });
    });
    return mentioned;
}

std::vector<std::string> namesListenedOn(std::string_view text) {
    std::vector<std::string> names;
    const auto add = [&names](std::string_view words) {
        forEachWord(words, [&names](std::string_view word, std::size_t) {
            if (names.size() < kMostNames && word.size() >= kShortestName && !isDigit(word.front()))
                addOnce(names, std::string(word));
        });
    };
    int openBrackets = 0; // of a call that goes on on the next lines
    int linesLeft = 0;
    forEachLine(text, [&](std::string_view raw) {
        std::string_view line = withoutComment(raw);
        const std::string small = inSmallLetters(line);
        std::size_t start = std::string::npos;
        for (const std::string_view word : kServing) {
            if (start == std::string::npos)
                start = small.find(word);
        }
        // Go's `&http.Server{ Addr: address }`
        if (const std::size_t key = line.find("Addr:"); start == std::string::npos)
            start = key;
        const bool goesOn = openBrackets > 0 && linesLeft > 0;
        if (start == std::string::npos && goesOn)
            start = 0;
        // What stands before the call may be about anything.
        if (start == std::string::npos)
            return;
        line.remove_prefix(start);
        const auto opened = std::ranges::count(line, '(') - std::ranges::count(line, ')');
        openBrackets = static_cast<int>(opened) + (goesOn ? openBrackets : 0);
        linesLeft = goesOn ? linesLeft - 1 : kMostLinesOfCall;
        bool hasPort = false;
        forEachPort(line, [&hasPort](std::uint16_t, std::size_t) { hasPort = true; });
        if (!hasPort && !asksOthers(small.substr(start)))
            add(line);
    });
    return names;
}

void addNamesCalled(std::vector<std::string>& names, std::string_view text) {
    const std::size_t count = names.size();
    forEachLine(text, [&](std::string_view raw) {
        const std::string_view line = withoutComment(raw);
        forEachWord(line, [&](std::string_view word, std::size_t place) {
            const auto last = names.begin() + static_cast<std::ptrdiff_t>(count);
            if (std::find(names.begin(), last, word) == last)
                return;
            std::string_view value = valueBehind(line, place + word.size());
            while (!value.empty() && !isWordCharacter(value.back()))
                value.remove_suffix(1);
            const bool isName = value.size() >= kShortestName && !isDigit(value.front()) &&
                                std::ranges::all_of(value, isWordCharacter);
            if (isName && names.size() < kMostNames)
                addOnce(names, std::string(value));
        });
    });
}

std::vector<std::uint16_t> portsCalled(std::span<const std::string> names, std::string_view text) {
    std::vector<std::uint16_t> ports;
    std::map<std::string_view, std::vector<std::uint16_t>> assigned;
    forEachLine(text, [&](std::string_view raw) {
        const std::string_view line = withoutComment(raw);
        forEachWord(line, [&](std::string_view word, std::size_t place) {
            if (std::ranges::find(names, word) == names.end())
                return;
            const std::size_t end = place + word.size();
            const std::vector<std::uint16_t> said = portsInValue(valueBehind(line, end));
            for (const std::uint16_t port : said)
                addOnce(ports, port);
            // What is assigned again is that from there on; keys of blocks stand side by side.
            const std::string_view rest = line.substr(end);
            const std::size_t equals = rest.find('=');
            if (said.empty() || rest.substr(0, equals).find_first_not_of(" :") != rest.npos ||
                equals == std::string_view::npos)
                return;
            std::vector<std::uint16_t>& before = assigned[word];
            std::erase_if(ports, [&](std::uint16_t port) {
                return std::ranges::find(before, port) != before.end() &&
                       std::ranges::find(said, port) == said.end();
            });
            before = said;
        });
    });
    return ports;
}

std::vector<std::uint16_t> spelledPorts(std::string_view text,
                                        std::span<const std::uint16_t> ports) {
    std::vector<std::uint16_t> spelled;
    forEachLine(text, [&](std::string_view raw) {
        const std::string_view line = withoutComment(raw);
        std::string small;
        forEachPort(line, [&](std::uint16_t port, std::size_t place) {
            if (std::ranges::find(ports, port) == ports.end() || isInUrl(line, place))
                return;
            if (small.empty())
                small = inSmallLetters(line);
            if (!asksOthers(small) && !mentions(small, kCounting))
                addOnce(spelled, port);
        });
    });
    return spelled;
}

std::vector<std::uint16_t> describedPorts(std::string_view text,
                                          std::span<const std::uint16_t> ports) {
    std::vector<std::uint16_t> described;
    for (const std::uint16_t port : ports) {
        const std::string number = std::to_string(port);
        for (std::size_t place = text.find(number); place != std::string_view::npos;
             place = text.find(number, place + 1)) {
            const std::size_t end = place + number.size();
            const bool isWhole = (place == 0 || !isWordCharacter(text[place - 1])) &&
                                 (end == text.size() || !isWordCharacter(text[end]));
            const std::size_t from = place - std::min(place, kVicinity);
            const std::string before = inSmallLetters(text.substr(from, place - from));
            if (isWhole && !isInUrl(text.substr(from, end - from), place - from) &&
                (before.find("port") != std::string::npos ||
                 before.find("listen") != std::string::npos)) {
                described.push_back(port);
                break;
            }
        }
    }
    return described;
}

std::vector<std::string> variablesIn(std::string_view text) {
    std::vector<std::string> names;
    const auto take = [&](std::size_t start) {
        std::size_t end = start;
        while (end < text.size() && isWordCharacter(text[end]))
            ++end;
        const std::string_view name = text.substr(start, end - start);
        const bool isVariable =
            !name.empty() && isCapital(name.front()) &&
            std::ranges::none_of(name, [](char letter) { return letter >= 'a' && letter <= 'z'; });
        if (isVariable)
            addOnce(names, std::string(name));
        return end;
    };
    // `const { PORT = 3000 } = process.env`
    const std::size_t unpacked = text.find("} = process.env");
    const std::size_t brace = text.substr(0, unpacked).rfind('{');
    if (unpacked != std::string_view::npos && brace != std::string_view::npos) {
        for (std::size_t place = brace; place < unpacked; ++place) {
            if (isWordCharacter(text[place]))
                place = take(place);
        }
    }
    for (std::size_t place = 0; place + 1 < text.size(); ++place) {
        if (text[place] == '$' && (text[place + 1] == '{' || isCapital(text[place + 1]))) {
            take(place + (text[place + 1] == '{' ? 2 : 1));
            continue;
        }
        // "env", "environ", "getenv", "ENV": the name of the variable follows behind letters, dots,
        // brackets and quotes.
        const char first = text[place];
        if ((first != 'e' && first != 'E') || place + 3 > text.size() ||
            (text[place + 1] != 'n' && text[place + 1] != 'N') ||
            (text[place + 2] != 'v' && text[place + 2] != 'V'))
            continue;
        std::size_t start = place + 3;
        while (start < text.size() && !isCapital(text[start]) &&
               (isWordCharacter(text[start]) ||
                std::string_view(".:([{!\"' ?$-").find(text[start]) != std::string_view::npos))
            ++start;
        // GetEnvironmentVariable and its like go on with a capital.
        while (start + 1 < text.size() && isCapital(text[start]) && text[start + 1] >= 'a' &&
               text[start + 1] <= 'z') {
            while (start < text.size() && isWordCharacter(text[start]))
                ++start;
            while (start < text.size() && !isWordCharacter(text[start]) && text[start] != '\n' &&
                   text[start] != ')' && text[start] != ',')
                ++start;
        }
        if (start < text.size() && !isWordCharacter(text[start - 1]))
            take(start);
        place += 2;
    }
    return names;
}

std::vector<std::uint16_t> portsInValue(std::string_view value) {
    std::vector<std::uint16_t> ports;
    forEachPort(value, [&ports](std::uint16_t port, std::size_t) { addOnce(ports, port); });
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
        for (std::size_t begin = line.find_first_of("\"'"); begin != std::string_view::npos;) {
            const std::size_t end = line.find(line[begin], begin + 1);
            if (end == std::string_view::npos)
                break;
            const std::string_view file = line.substr(begin + 1, end - begin - 1);
            if (file.starts_with("./") || file.starts_with("../") ||
                line.starts_with("require_relative") || line.starts_with("require '") ||
                line.starts_with("require \""))
                add(file);
            begin = line.find_first_of("\"'", end + 1);
        }
        // Perl names it with colons.
        if (line.starts_with("use ") && line.size() > 4 && isCapital(line[4])) {
            std::string module(line.substr(4, line.find_first_of(" ;(", 4) - 4));
            for (std::size_t colons = module.find("::"); colons != std::string::npos;
                 colons = module.find("::"))
                module.replace(colons, 2, "/");
            add(module);
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
            // What is taken from a package may be a module of it.
            const std::size_t taken = line.find(" import ");
            if (taken != std::string_view::npos && !module.empty()) {
                forEachWord(line.substr(taken + 8), [&](std::string_view name, std::size_t) {
                    add(module + "/" + std::string(name));
                });
            }
        }
    }
    return files;
}

std::vector<std::string> namedSettings(std::string_view text) {
    std::vector<std::string> files;
    forEachLine(text.substr(0, std::size_t{256} * 1024), [&files](std::string_view line) {
        for (std::size_t begin = line.find_first_of("\"'`"); begin != std::string_view::npos;) {
            const std::size_t end = line.find(line[begin], begin + 1);
            if (end == std::string_view::npos)
                return;
            const std::string_view name = line.substr(begin + 1, end - begin - 1);
            const std::string_view base = name.substr(name.rfind('/') + 1);
            const bool isPlain =
                name.size() < 200 && name.find_first_of(" *{}<>$:") == std::string_view::npos;
            if (isPlain && files.size() < kMostImports &&
                base.find('.') != std::string_view::npos &&
                (isSettingsFile(base) || base.starts_with(".env")) && base != "package.json")
                addOnce(files, std::string(name));
            begin = line.find_first_of("\"'`", end + 1);
        }
    });
    return files;
}

std::vector<std::string> foldersOfVariables(std::string_view text) {
    std::vector<std::string> folders;
    forEachLine(text, [&folders](std::string_view raw) {
        const std::string_view line = withoutComment(raw);
        for (const std::string_view word : {"envDir", "loadEnv("}) {
            const std::size_t place = line.find(word);
            if (place == std::string_view::npos)
                continue;
            // Of a call the first value is the stage.
            const std::size_t from = word.ends_with('(') ? line.find(',', place) : place;
            const std::size_t begin = line.find_first_of("\"'", from);
            const std::size_t end =
                begin == std::string_view::npos ? begin : line.find(line[begin], begin + 1);
            const bool isOwn = end != std::string_view::npos && line[begin + 1] == '.';
            if (isOwn && folders.size() < kMostImports)
                addOnce(folders, std::string(line.substr(begin + 1, end - begin - 1)));
        }
    });
    return folders;
}

} // namespace zenlot
