// What is known of development servers: how they are recognised, and how they come to their port.
// The knowledge is data (runtimes.json, compiled in); here is its form.
//
// A row is found by the name of a tool, see inventory/programs/invocation.h. Keys of a row:
//
//     name         what people call it
//     programs     tools that the row is about; "package/tool" where the tool alone says too little
//     within       words of which one must stand among the arguments; of several rows of a program
//                  the first counts that is met so, or asks for none
//     without      first words with which it serves nothing
//     flags        options whose value is a port, an address with a port, or several
//     host         options whose value is the address alone
//     environment  variables with a port or an address in them, the first that is set counts
//     positional   whether a bare port or address with a port among the arguments counts
//     configs      files, from the working directory, that may name the port
//     configFlags  options whose value is such a file
//     script       whether the program itself, a script or a built one, may name the port; its
//                  variables count only where it asks for them
//     libraries    by words of such a script, the port that the library takes
//     dotenv       whether it reads ".env" without being told
//     default      the port without all that; `defaults` by first word
//     drifts       whether it takes another port by itself when it can't have the wanted one
//     asks         whether it goes on without a port: asks what to do, or tries again and again
//     connects     whether it finds out by connecting that a port is taken, and not by binding
//     publishes    whether it only asks for ports of others: "8080:80" stands for the first of
//     them,
//                  and its end comes later than the refusal
//     probes       whether it makes sockets at its start to see what the machine has, and others
//                  before it asks for the address of a name: only an IPv6 one then says anything
//                  that no IPv4 one follows at once and that follows no question
#pragma once

#include "inventory/programs/invocation.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

struct Runtime {
    std::string name;
    std::vector<std::string> programs;
    std::vector<std::string> within;
    std::vector<std::string> without;
    std::vector<std::string> flags;
    std::vector<std::string> hostFlags;
    std::vector<std::string> environment;
    std::vector<std::string> configs;
    std::vector<std::string> configFlags;
    std::map<std::string, std::uint16_t, std::less<>> defaultPorts; // "" for every other word
    std::map<std::string, std::uint16_t, std::less<>> libraries;
    bool takesPositional{false};
    bool mayNamePortItself{false};
    bool readsEnvironmentFile{false};
    bool drifts{false};
    bool goesOnWithoutPort{false};
    bool probesByConnecting{false};
    bool probesProtocols{false};
    bool publishesPorts{false};

    std::optional<std::uint16_t> defaultPort(std::string_view firstWord) const;
};

class RuntimeTable {
  public:
    // The table that is compiled in.
    RuntimeTable();
    // A table of one's own; empty when anything in the text is wrong.
    explicit RuntimeTable(std::string_view json);

    const std::vector<Runtime>& rows() const { return rows_; }

    // The row of the tool, else of its generic kind, else that of any program; null when the table
    // has none of them.
    const Runtime* find(const Invocation& invocation) const;

  private:
    void index();
    const Runtime* findProgram(std::string_view program,
                               std::span<const std::string> arguments) const;

    std::vector<Runtime> rows_;
    std::map<std::string, std::vector<std::size_t>, std::less<>> byProgram_;
};

} // namespace zenlot
