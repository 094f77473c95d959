// What a command line runs: the tool that its words are for, behind interpreters and their options.
//
//     python3 -m http.server 8123                   tool "http.server"
//     node node_modules/.bin/vite --port 4000       tool "vite"
//     /usr/bin/node server.js                       tool "node script", script "server.js"
//     /home/ada/shop/target/debug/shop              tool "built program"
//
// Pure; nothing is read from the disk.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

// The generic tool of a program that lies outside of the system's folders, as one does that the
// user built.
inline constexpr std::string_view kBuiltProgram = "built program";
// What stands in the table for every program that has no other row.
inline constexpr std::string_view kAnyProgram = "any program";

struct Invocation {
    std::string package;                // of the script, where its path tells
    std::string tool;                   // what the table is asked for; see RuntimeTable
    std::string genericTool;            // what to ask for when no row knows the tool; may be empty
    std::vector<std::string> arguments; // of the tool
    std::string script;                 // as it stands in the command line; empty without one
    std::vector<std::string> classPath; // of Java's machine: the folders, and the archive it runs
    std::string libraries;              // the names of those on the class path, a blank between
    std::string inlineSource;           // of a program that stands in the command line itself
    std::vector<std::string> inherited; // arguments that a variable adds, see addsArguments
    std::vector<std::string> environmentFiles; // that the interpreter is told to read
    std::string debugger; // where a debugger is to be waited for, beside all the rest; may be empty

    friend bool operator==(const Invocation&, const Invocation&) = default;
};

// None for shells and for programs that can't be a development server. `executable` is the path of
// the program.
std::optional<Invocation> identifyInvocation(std::span<const std::string> commandLine,
                                             const std::string& executable);

// Whether what a variable with that name holds is added to the tool's arguments: GUNICORN_CMD_ARGS,
// JAVA_TOOL_OPTIONS, MINIO_OPTS.
bool addsArguments(const Invocation& invocation, std::string_view variable);

// Whether a script came with a package or with the system, so that it is nobody's own.
bool isInstalledScript(std::string_view script);

} // namespace zenlot
