#include "background_monitor/invocation.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace zenlot {
namespace {

// How an interpreter's command line is read. Options are separated by blanks.
struct Interpreter {
    std::string_view name;
    std::string_view valueOptions;  // that take the next word
    std::string_view inlineOptions; // whose value is the program
    std::string_view moduleOption;  // whose value is the name of the tool
    std::string_view subcommands;   // that may stand before the script
};

constexpr std::array<Interpreter, 9> kInterpreters{{
    {"node",
     " -r --require --import --loader --experimental-loader -C --conditions --env-file "
     "--watch-path --title --icu-data-dir ",
     " -e --eval -p --print -pe ", "", ""},
    {"python", " -X -W --check-hash-based-pycs ", " -c ", "-m", ""},
    {"ruby", " -I -r -C -E -x ", " -e ", "", ""},
    {"php", " -c -d -z -t ", " -r ", "", ""},
    {"deno", " -c --config --import-map --lock --location ", "", "", " run serve task "},
    {"bun", " -r --preload -c --config --cwd ", " -e --eval ", "", " run x "},
    {"tsx", " --tsconfig --import -r --require ", " -e --eval ", "", " watch "},
    {"ts-node", " -P --project -r --require -O ", " -e --eval ", "", ""},
    {"ts-node-dev", " -P --project -r --require -O ", "", "", ""},
}};

constexpr std::array<std::string_view, 20> kNever{
    "sh",   "bash",  "dash", "zsh", "fish", "ksh",  "csh", "tcsh",   "env",    "sudo",
    "make", "cargo", "go",   "git", "ssh",  "tmux", "gdb", "strace", "docker", "systemd"};

// Runtimes whose arguments are the tool's own.
constexpr std::array<std::string_view, 3> kPlain{"java", "dotnet", "beam.smp"};

constexpr std::array<std::string_view, 10> kScriptEndings{".js",  ".mjs", ".cjs", ".ts", ".mts",
                                                          ".cts", ".tsx", ".py",  ".rb", ".php"};

bool isWordOf(std::string_view list, std::string_view word) {
    return !word.empty() && list.find(" " + std::string(word) + " ") != std::string_view::npos;
}

std::string_view baseName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

bool isBelow(std::string_view path, std::string_view folder) {
    return folder.size() > 1 && path.size() > folder.size() && path.starts_with(folder) &&
           path[folder.size()] == '/';
}

bool hasScriptEnding(std::string_view path) {
    return std::ranges::any_of(kScriptEndings,
                               [path](std::string_view ending) { return path.ends_with(ending); });
}

std::string_view withoutScriptEnding(std::string_view name) {
    for (const std::string_view ending : kScriptEndings) {
        if (name.size() > ending.size() && name.ends_with(ending))
            return name.substr(0, name.size() - ending.size());
    }
    return name;
}

// "python3.11" and "php8.2" are versions of one interpreter, "nodejs" an older name.
std::string_view withoutVersion(std::string_view name) {
    if (name == "nodejs")
        return "node";
    const std::size_t end = name.find_last_not_of("0123456789.-");
    return end == std::string_view::npos ? name : name.substr(0, end + 1);
}

// What stands behind the last "node_modules" of a path.
std::string packageOf(std::string_view path) {
    constexpr std::string_view kFolder = "node_modules/";
    const std::size_t folder = path.rfind(kFolder);
    if (folder == std::string_view::npos)
        return {};
    path.remove_prefix(folder + kFolder.size());
    std::size_t end = path.find('/');
    if (path.starts_with('@') && end != std::string_view::npos)
        end = path.find('/', end + 1);
    return std::string(path.substr(0, end));
}

// A script of an installed package has its row, or none; only one of the user's own is generic.
bool isInstalled(std::string_view script) {
    return script.find("node_modules/") != std::string_view::npos ||
           script.find("site-packages/") != std::string_view::npos ||
           script.find("dist-packages/") != std::string_view::npos ||
           (script.starts_with('/') && !hasScriptEnding(script) &&
            script.find("/bin/") != std::string_view::npos) ||
           script.starts_with("/usr/lib/") || script.starts_with("/usr/share/");
}

std::vector<std::string> from(std::span<const std::string> words, std::size_t first) {
    words = words.subspan(std::min(first, words.size()));
    return {words.begin(), words.end()};
}

void takeScript(Invocation& invocation, const Interpreter& interpreter,
                std::span<const std::string> words, std::size_t place) {
    const std::string& script = words[place];
    invocation.script = script;
    invocation.package = packageOf(script);
    invocation.tool = withoutScriptEnding(baseName(script));
    invocation.arguments = from(words, place + 1);
    if (!isInstalled(script)) {
        const bool isNodeKin = interpreter.name.starts_with("ts") || interpreter.name == "node";
        if (interpreter.name == "deno" || interpreter.name == "bun")
            invocation.genericTool = interpreter.name;
        else
            invocation.genericTool =
                (isNodeKin ? std::string("node") : std::string(interpreter.name)) + " script";
    }
}

// A word that begins with a short option and goes on with its value, such as -rjson.
bool hasAttachedValue(std::string_view options, std::string_view word) {
    return word.size() > 2 && word[1] != '-' && isWordOf(options, word.substr(0, 2));
}

Invocation readInterpreted(const Interpreter& interpreter, std::span<const std::string> words) {
    Invocation invocation;
    // `ruby -run -e httpd` runs a tool of the library that it loads.
    bool runsLibraryTool = false;
    for (std::size_t place = 1; place < words.size(); ++place) {
        const std::string& word = words[place];
        const bool hasNext = place + 1 < words.size();
        if (word == interpreter.moduleOption && hasNext) {
            invocation.tool = words[place + 1];
            invocation.arguments = from(words, place + 2);
            return invocation;
        }
        if (interpreter.name == "php" && word.starts_with("-S")) {
            invocation.tool = "php";
            invocation.arguments = from(words, place);
            return invocation;
        }
        if (isWordOf(interpreter.inlineOptions, word) && hasNext) {
            if (runsLibraryTool)
                invocation.tool = "un-" + words[place + 1];
            else
                invocation.inlineSource = words[place + 1];
            invocation.genericTool = std::string(interpreter.name) + " script";
            invocation.arguments = from(words, place + 2);
            return invocation;
        }
        runsLibraryTool |= interpreter.name == "ruby" && word == "-run";
        if (isWordOf(interpreter.valueOptions, word))
            ++place;
        else if (!word.starts_with('-') && !isWordOf(interpreter.subcommands, word)) {
            takeScript(invocation, interpreter, words, place);
            return invocation;
        } else if (hasAttachedValue(interpreter.valueOptions, word)) {
            continue;
        }
    }
    return invocation; // waits for a program on its standard input
}

// The file of `java -cp FOLDER Main`, or the one that is run from its source.
std::string javaProgram(std::span<const std::string> words) {
    std::string folder = ".";
    for (std::size_t place = 1; place < words.size(); ++place) {
        const std::string& word = words[place];
        const bool hasNext = place + 1 < words.size();
        if ((word == "-cp" || word == "-classpath" || word == "--class-path") && hasNext)
            folder = words[++place];
        else if (word == "-jar")
            return {};
        else if ((word == "-p" || word == "--module-path" || word == "--add-modules") && hasNext)
            ++place;
        else if (!word.starts_with('-')) {
            if (word.ends_with(".java"))
                return word;
            std::string file = word;
            std::ranges::replace(file, '.', '/');
            return folder.substr(0, folder.find(':')) + "/" + file + ".class";
        }
    }
    return {};
}

} // namespace

std::optional<Invocation> identifyInvocation(std::span<const std::string> commandLine,
                                             const std::string& executable,
                                             const std::string& home) {
    if (commandLine.empty() || commandLine.front().empty())
        return std::nullopt;
    const std::string_view program = baseName(commandLine.front());
    const std::string_view name = withoutVersion(program);
    if (std::ranges::find(kNever, name) != kNever.end() || name.starts_with('-'))
        return std::nullopt;

    for (const Interpreter& interpreter : kInterpreters) {
        if (interpreter.name != name)
            continue;
        Invocation invocation = readInterpreted(interpreter, commandLine);
        if (invocation.tool.empty() && invocation.inlineSource.empty())
            return std::nullopt;
        // A runner of scripts is a script itself, and another process runs what it is given.
        const auto isRunner = [&invocation](const Interpreter& other) {
            return other.name == invocation.tool;
        };
        if (!invocation.script.empty() && std::ranges::any_of(kInterpreters, isRunner))
            return std::nullopt;
        return invocation;
    }

    Invocation invocation;
    invocation.tool = program;
    invocation.arguments = from(commandLine, 1);
    if (std::ranges::find(kPlain, name) != kPlain.end()) {
        invocation.tool = name;
        if (name == "java")
            invocation.script = javaProgram(commandLine);
    } else if (isBelow(executable, home) || isBelow(executable, "/tmp") ||
               isBelow(executable, "/var/tmp")) {
        invocation.genericTool = kBuiltProgram;
    }
    return invocation;
}

} // namespace zenlot
