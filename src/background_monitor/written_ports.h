// Finds where sources and built programs say which port they listen on. Pure; see SourceReader for
// the files.
#pragma once

#include "inventory/listening_socket.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

// One line of a source that says where to listen.
struct PortSite {
    // 4 beside "listen" or "serve", 3 where something is called just "port", 2 where a longer name
    // says "port", "bind" or "address".
    int likelihood{0};
    std::vector<std::string> variables; // of the environment, in the order in which they are asked
    std::vector<std::uint16_t> ports;   // what stands there, or counts when no variable is set
    bool readsArguments{false};         // whether the command line is asked on that line
    std::vector<IpAddress> addresses;   // that stand there as numbers

    friend bool operator==(const PortSite&, const PortSite&) = default;
};

// In the order of the text. A line that speaks of databases, clients or other servers counts for
// nothing.
std::vector<PortSite> portSites(std::string_view text);

// Those of the given ports that the text mentions as a port to listen on, more broadly than a site:
// the number stands on a line that speaks of listening, whatever else that line says, but not of
// others. What stands in the URL of somebody who is asked for something does not count.
std::vector<std::uint16_t> mentionedPorts(std::string_view text,
                                          std::span<const std::uint16_t> ports);

// The names on the lines that listen and hold no number themselves: `server.listen(config.mqtt)`
// gives "config" and "mqtt", among others.
std::vector<std::string> namesListenedOn(std::string_view text);

// Adds the names that stand for one of the names: `"web_port": WEB_PORT` adds "WEB_PORT".
void addNamesCalled(std::vector<std::string>& names, std::string_view text);

// What sources and settings say that one of the names is: `"mqtt": 1883`,
// `WHERE = ('localhost', 4990)`.
std::vector<std::uint16_t> portsCalled(std::span<const std::string> names, std::string_view text);

// Those of the given ports that the text holds as a number, whatever its line is about, but for
// what others listen on, times and sizes.
std::vector<std::uint16_t> spelledPorts(std::string_view text,
                                        std::span<const std::uint16_t> ports);

// Those of the given ports that follow a word about listening within a line or two, as in a manual
// and in sources without line ends.
std::vector<std::uint16_t> describedPorts(std::string_view text,
                                          std::span<const std::uint16_t> ports);

// The names of variables that a value of a settings file or a line of a source asks for:
// "process.env.PORT", "${PORT:-8080}", `os.getenv('X', 4990)`.
std::vector<std::string> variablesIn(std::string_view text);

// The numbers in a value that may be ports, in their order.
std::vector<std::uint16_t> portsInValue(std::string_view value);

// Those of the given ports that a built program mentions as ":8080", and those that compiled
// bytecode for the Java machine holds as a number (`isBytecode`).
enum class BinaryKind : std::uint8_t { program, bytecode };
std::vector<std::uint16_t> portsInBinary(std::string_view binary, BinaryKind kind,
                                         std::span<const std::uint16_t> ports);

// The files that a script names relatively to itself, without their endings where the script leaves
// them out: "./app" and "app" of `require('./app')`, `from app import x`, `require_relative 'app'`.
std::vector<std::string> relativeImports(std::string_view text);

// The settings files that a source names in quotes, such as "config/app.yaml" and ".env.test".
std::vector<std::string> namedSettings(std::string_view text);

// The folders of ".env" that a tool's configuration names: `envDir: ".."`, `loadEnv(mode, "..")`.
std::vector<std::string> foldersOfVariables(std::string_view text);

} // namespace zenlot
