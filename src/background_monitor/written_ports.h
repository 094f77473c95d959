// Finds the ports that a program may listen on in what is written in it: the source of a script,
// its configuration, the strings of a built program. Pure; see SourceReader for the files.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

struct WrittenPort {
    std::uint16_t port{0};
    int likelihood{0}; // 3 beside "listen" or "serve", 2 beside "port" or "bind", 1 in an address

    friend bool operator==(const WrittenPort&, const WrittenPort&) = default;
};

// The numbers in a text that stand where a port to listen on would, in the order of the text. A
// line that speaks of databases, clients or other servers counts for nothing.
std::vector<WrittenPort> portsInText(std::string_view text);

// Those of the given ports that a built program mentions as ":8080", and those that compiled
// bytecode for the Java machine holds as a number (`isBytecode`).
enum class BinaryKind : std::uint8_t { program, bytecode };
std::vector<std::uint16_t> portsInBinary(std::string_view binary, BinaryKind kind,
                                         std::span<const std::uint16_t> ports);

// The files that a script names relatively to itself, without their endings where the script leaves
// them out: "./app" and "app" of `require('./app')`, `from app import x`, `require_relative 'app'`.
std::vector<std::string> relativeImports(std::string_view text);

} // namespace zenlot
