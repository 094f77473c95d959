// How a port is written: as a number, with an address before it, and whether words speak of a port
// to listen on or of somebody else's. Pure; shared by the readers of arguments, settings and
// sources.
#pragma once

#include "inventory/listening_socket.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

// Below it a number counts workers or seconds.
inline constexpr std::uint16_t kLowestPort = 80;

// A port, and the address before it, where one is named.
struct Endpoint {
    std::uint16_t port{0};
    std::string_view host;

    friend bool operator==(const Endpoint&, const Endpoint&) = default;
};

// "4000", ":4000", "localhost:4000", "[::1]:4000", "tcp://0.0.0.0:4000/path". Of several, which are
// set apart by commas or semicolons, the first.
std::optional<Endpoint> parseEndpoint(std::string_view text);

// Of "8080:80", "127.0.0.1:8080:80/tcp" what the machine listens on; empty where it chooses itself.
std::string_view publishedEndpoint(std::string_view text);

// The addresses that a name of a host stands for; empty when that is not known.
std::vector<IpAddress> addressesOf(std::string_view host);

inline bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

std::string inSmallLetters(std::string_view text);

// Calls back with every line, without its end.
template <typename Call>
void forEachLine(std::string_view text, Call&& call) {
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        call(line);
    }
}

template <std::size_t Count>
bool isOneOf(std::string_view word, const std::array<std::string_view, Count>& words) {
    return std::ranges::find(words, word) != words.end();
}

// Whether a name or a line, in small letters, is about a database, a peer, a proxy's target, or
// anything else that some other program listens on.
bool speaksOfOthers(std::string_view text);

// Whether the name of an option, a variable or a key, in small letters, says that its value is
// where a server listens.
bool speaksOfListening(std::string_view name);

// The value of an option, a property or an assignment at that place of a command line, where its
// name says that a server listens there: of --listen-port, -Dhttp.port= and port=. None where the
// value can't be a port.
std::optional<std::string_view> tellingValue(const std::vector<std::string>& arguments,
                                             std::size_t place);

// Whether a word of a command line leaves the network for a socket in the file system, or for one
// that somebody else has opened.
bool namesOtherSocket(std::string_view word);

} // namespace zenlot
