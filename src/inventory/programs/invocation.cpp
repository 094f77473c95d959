#include "inventory/programs/invocation.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <utility>

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

constexpr std::array<Interpreter, 17> kInterpreters{{
    {"node",
     " -r --require --import --loader --experimental-loader -C --conditions --env-file "
     "--env-file-if-exists "
     "--watch-path --title --icu-data-dir ",
     " -e --eval -p --print -pe ", "", ""},
    {"python", " -X -W --check-hash-based-pycs ", " -c ", "-m", ""},
    {"ruby", " -I -r -C -E -x ", " -e ", "", ""},
    {"php", " -c -d -z -t ", " -r ", "", ""},
    {"deno", " -c --config --import-map --lock --location --port --host ", "", "", " run serve "},
    {"bun", " -r --preload -c --config --cwd ", " -e --eval ", "", " run x "},
    {"tsx", " --tsconfig --import -r --require ", " -e --eval ", "", " watch "},
    {"ts-node", " -P --project -r --require -O ", " -e --eval ", "", ""},
    {"ts-node-dev", " -P --project -r --require -O ", "", "", ""},
    {"perl", " -I ", " -e -E ", "", ""},
    {"lua", " -l ", " -e ", "", ""},
    {"luajit", " -l ", " -e ", "", ""},
    {"tclsh", " -encoding ", "", "", ""},
    {"Rscript", " -p ", " -e ", "", ""},
    {"guile", " -L -C -l ", " -c ", "", ""},
    {"swipl", " -g -t -x -p -l ", "", "", ""},
    {"sbcl", " --core ", " --eval ", "", ""},
}};

// What the table calls scripts of interpreters that are not their own namesakes.
constexpr std::array<std::pair<std::string_view, std::string_view>, 10> kKindred{{
    {"tsx", "node"},
    {"ts-node", "node"},
    {"ts-node-dev", "node"},
    {"luajit", "lua"},
    {"tclsh", "tcl"},
    {"Rscript", "R"},
    {"R", "R"},
    {"guile", "lisp"},
    {"sbcl", "lisp"},
    {"swipl", "lisp"},
}};

// Tools that run, in their own process, the command that their words name.
constexpr std::array<std::string_view, 12> kCarriers{
    "bundle",  "debugpy", "coverage",  "cProfile",    "profile", "pdb",
    "ts-node", "wrap",    "vite-node", "ddtrace-run", "pipenv",  "poetry"};

// The other half of Python's debugger listens for editors, and for nobody else.
constexpr std::string_view kDebuggersOwn = "debugpy/adapter";

// Shells, what only starts or looks at others, clients, compilers, and what scripts call all day.
constexpr std::string_view kNever =
    " sh bash dash zsh fish ksh csh tcsh env sudo su doas make ninja cmake cargo rustc go git gh "
    "hg "
    "svn ssh scp sftp tmux screen gdb lldb strace ltrace perf systemd systemctl journalctl "
    "dbus-daemon dbus-send busctl gdbus curl wget http https xh ab wrk hey siege nmap telnet psql "
    "pg_isready mysql mysqladmin redis-cli mongosh mongo sqlite3 dig host nslookup ping ss netstat "
    "lsof fuser ip gcc g++ cc c++ cpp cc1 cc1plus clang clang++ as ld ld.lld collect2 ccache javac "
    "ls cat grep egrep fgrep sed awk gawk mawk find xargs head tail sort uniq cut tr wc tee touch "
    "mkdir rmdir rm cp mv ln chmod chown stat readlink realpath dirname basename date sleep true "
    "false test [ expr echo printf seq which id whoami uname hostname tty stty tput clear less "
    "more "
    "man vi vim nvim nano emacs ps pgrep pkill kill killall top htop df du free mount tar gzip "
    "gunzip xz zstd zip unzip md5sum sha256sum diff patch file timeout nice nohup setsid time "
    "watch "
    "apt apt-get dpkg rpm dnf pacman snap flatpak zenlot zenlotctl zenlot-monitor "
    "zenlot-automation ";

// Runtimes whose arguments are the tool's own.
constexpr std::array<std::string_view, 3> kPlain{"java", "dotnet", "beam.smp"};

constexpr std::array<std::string_view, 18> kScriptEndings{
    ".js",  ".mjs", ".cjs",  ".ts",  ".mts", ".cts", ".tsx", ".py",   ".rb",
    ".php", ".pl",  ".psgi", ".lua", ".tcl", ".R",   ".scm", ".lisp", ".exs"};

// Folders of programs that came with the system.
constexpr std::array<std::string_view, 8> kSystemFolders{
    "/usr/bin", "/usr/sbin", "/bin", "/sbin", "/usr/lib", "/usr/libexec", "/usr/games", "/lib"};

// The list begins and ends with a blank.
bool isWordOf(std::string_view list, std::string_view word) {
    for (std::size_t place = word.empty() ? std::string_view::npos : list.find(word, 1);
         place != std::string_view::npos; place = list.find(word, place + 1)) {
        const std::size_t end = place + word.size();
        if (list[place - 1] == ' ' && end < list.size() && list[end] == ' ')
            return true;
    }
    return false;
}

std::string_view baseName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

bool isBelow(std::string_view path, std::string_view folder) {
    return folder.size() > 1 && path.size() > folder.size() && path.starts_with(folder) &&
           path[folder.size()] == '/';
}

// A program without a folder was found among those of the system.
bool isOfSystem(std::string_view executable) {
    return executable.find('/') == std::string_view::npos ||
           std::ranges::any_of(kSystemFolders, [executable](std::string_view folder) {
               return isBelow(executable, folder);
           });
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

std::vector<std::string> from(std::span<const std::string> words, std::size_t first) {
    words = words.subspan(std::min(first, words.size()));
    return {words.begin(), words.end()};
}

std::string genericToolOf(std::string_view interpreter) {
    if (interpreter == "deno" || interpreter == "bun")
        return std::string(interpreter);
    const auto kin = std::ranges::find(kKindred, interpreter,
                                       &std::pair<std::string_view, std::string_view>::first);
    return std::string(kin == kKindred.end() ? interpreter : kin->second) + " script";
}

void takeScript(Invocation& invocation, const Interpreter& interpreter,
                std::span<const std::string> words, std::size_t place) {
    const std::string& script = words[place];
    invocation.script = script;
    invocation.package = packageOf(script);
    invocation.tool = withoutScriptEnding(baseName(script));
    invocation.arguments = from(words, place + 1);
    // A script of an installed package has its row, or none; only one of the user's own is generic.
    if (!isInstalledScript(script)) {
        invocation.genericTool = genericToolOf(interpreter.name);
        // One's own "serve.py" is no "serve"; Django's script is everybody's own.
        if (hasScriptEnding(script) && invocation.tool != "manage")
            invocation.tool = baseName(script);
    }
    if (interpreter.name != "deno" && interpreter.name != "bun")
        return;
    // Their own options come before the script, and a package may stand in its place.
    invocation.arguments = from(words, 1);
    std::erase(invocation.arguments, script);
    std::string_view package = script;
    if (!package.starts_with("npm:") && !package.starts_with("jsr:"))
        return;
    package.remove_prefix(4);
    package = package.substr(0, package.find('@', 1));
    invocation.tool = baseName(package);
    invocation.script.clear();
    invocation.genericTool.clear();
}

// "--inspect", "--inspect-brk=127.0.0.1:9230", but not "--inspect-port".
std::string debuggerOfNode(std::string_view word) {
    const std::size_t equals = std::min(word.find('='), word.size());
    const std::string_view option = word.substr(0, equals);
    if (option != "--inspect" && option != "--inspect-brk" && option != "--inspect-wait")
        return {};
    constexpr std::string_view kUsual = "127.0.0.1:9229";
    return std::string(equals < word.size() ? word.substr(equals + 1) : kUsual);
}

// Of "-agentlib:jdwp=transport=dt_socket,server=y,address=*:5005" the address; what manages the
// machine waits in the same way.
std::string debuggerOfJava(std::string_view word) {
    constexpr std::string_view kManagement = "-Dcom.sun.management.jmxremote.port=";
    if (word.starts_with(kManagement))
        return std::string(word.substr(kManagement.size()));
    constexpr std::string_view kAddress = "address=";
    const bool isAgent = word.starts_with("-agentlib:jdwp=") || word.starts_with("-Xrunjdwp:");
    const std::size_t address = word.find(kAddress);
    if (!isAgent || word.find("server=y") == std::string_view::npos ||
        address == std::string_view::npos)
        return {};
    word.remove_prefix(address + kAddress.size());
    return std::string(word.substr(0, word.find(',')));
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
        if (!interpreter.moduleOption.empty() && word == interpreter.moduleOption && hasNext) {
            invocation.tool = words[place + 1];
            invocation.arguments = from(words, place + 2);
            // A module of one's own is a script; an installed one has no file below the folder.
            invocation.genericTool = genericToolOf(interpreter.name);
            invocation.script = words[place + 1];
            std::ranges::replace(invocation.script, '.', '/');
            return invocation;
        }
        constexpr std::string_view kEnvironmentFile = "--env-file";
        if (word.starts_with(kEnvironmentFile)) {
            const std::size_t equals = word.find('=');
            if (equals != std::string::npos)
                invocation.environmentFiles.push_back(word.substr(equals + 1));
            else if (hasNext)
                invocation.environmentFiles.push_back(words[place + 1]);
        }
        if (interpreter.name == "node" && word.starts_with("--inspect"))
            invocation.debugger = debuggerOfNode(word);
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
            invocation.genericTool = genericToolOf(interpreter.name);
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

bool isClassPathOption(std::string_view word) {
    return word == "-cp" || word == "-classpath" || word == "--class-path";
}

// The file of `java -cp FOLDER Main`, or the one that is run from its source.
std::string javaProgram(std::span<const std::string> words) {
    std::string folder = ".";
    for (std::size_t place = 1; place < words.size(); ++place) {
        const std::string& word = words[place];
        const bool hasNext = place + 1 < words.size();
        if (isClassPathOption(word) && hasNext)
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

// Where Java's machine looks for what is no class. Archives but the first are libraries. The class
// path, which may be long, says nothing else and is taken out of the words.
void takeJavaClassPath(Invocation& invocation) {
    constexpr std::size_t kMostEntries = 12;
    constexpr std::size_t kMostOfLibraries = 4096;
    std::vector<std::string>& words = invocation.arguments;
    std::vector<std::string>& entries = invocation.classPath;
    for (std::size_t place = 0; place + 1 < words.size();) {
        if (words[place] == "-jar")
            entries.push_back(words[place + 1]);
        if (!isClassPathOption(words[place])) {
            ++place;
            continue;
        }
        const std::string path = words[place + 1];
        const auto option = words.begin() + static_cast<std::ptrdiff_t>(place);
        words.erase(option, option + 2);
        std::string_view rest = path;
        while (!rest.empty()) {
            const std::string_view entry = rest.substr(0, rest.find(':'));
            rest.remove_prefix(std::min(rest.size(), entry.size() + 1));
            if (entry.ends_with(".jar") && invocation.libraries.size() < kMostOfLibraries)
                invocation.libraries += std::string(baseName(entry)) + " ";
            if (!entry.empty() && entries.size() < kMostEntries &&
                (entries.empty() || !entry.ends_with(".jar")))
                entries.emplace_back(entry);
        }
    }
}

// What Erlang's machine is to run stands among its options, as an expression or as a script.
void readErlang(Invocation& invocation) {
    const bool runsFramework =
        std::ranges::find(invocation.arguments, "phx.server") != invocation.arguments.end();
    if (!runsFramework)
        invocation.tool = invocation.genericTool = "erlang script";
    bool isExpression = false;
    for (const std::string& word : invocation.arguments) {
        if (isExpression)
            invocation.inlineSource += word + "\n";
        isExpression = word == "-eval" || word == "-e";
        if (!word.starts_with('-') && (word.ends_with(".exs") || word.ends_with(".escript") ||
                                       word.ends_with(".erl") || word.ends_with(".ex")))
            invocation.script = word;
    }
}

// The command that a carrier runs in its own process, behind the carrier's own options.
std::optional<std::vector<std::string>> carriedCommand(const Invocation& carrier,
                                                       const std::string& interpreter) {
    if (std::ranges::find(kCarriers, carrier.tool) == kCarriers.end())
        return std::nullopt;
    const std::vector<std::string>& words = carrier.arguments;
    std::size_t place = 0;
    if (carrier.tool == "bundle") {
        if (words.empty() || words.front() != "exec")
            return std::nullopt;
        place = 1;
    } else if (carrier.tool == "wrap" && carrier.package != "ts-node-dev") {
        return std::nullopt;
    } else if (carrier.tool == "coverage") {
        place = 1; // of `coverage run`
    }
    for (; place < words.size(); ++place) {
        const std::string& word = words[place];
        if (word == "-m" || !word.starts_with('-'))
            break;
        constexpr std::string_view kWithValue =
            " --listen --connect --log-to --pid -o -s -c -P --project -r --require -O --config "
            "--root --configure-subProcess ";
        if (isWordOf(kWithValue, word))
            ++place;
    }
    if (place >= words.size())
        return std::nullopt;
    std::vector<std::string> command{interpreter};
    command.insert(command.end(), words.begin() + static_cast<std::ptrdiff_t>(place), words.end());
    return command;
}

} // namespace

bool addsArguments(const Invocation& invocation, std::string_view variable) {
    constexpr std::array<std::string_view, 5> kEndings{"_CMD_ARGS", "_ARGS", "_OPTS", "_OPTIONS",
                                                       "_FLAGS"};
    const auto ending = std::ranges::find_if(
        kEndings, [variable](std::string_view each) { return variable.ends_with(each); });
    if (ending == kEndings.end() || invocation.tool.empty())
        return false;
    const std::string_view beginning = variable.substr(0, variable.size() - ending->size());
    if (invocation.tool == "java")
        return beginning == "JAVA_TOOL" || beginning == "JDK_JAVA";
    return std::ranges::equal(beginning, invocation.tool, [](char capital, char letter) {
        return capital == (letter == '-' ? '_' : std::toupper(static_cast<unsigned char>(letter)));
    });
}

bool isInstalledScript(std::string_view script) {
    return script.find("node_modules/") != std::string_view::npos ||
           script.find("site-packages/") != std::string_view::npos ||
           script.find("dist-packages/") != std::string_view::npos ||
           (script.starts_with('/') && !hasScriptEnding(script) &&
            script.find("/bin/") != std::string_view::npos) ||
           script.starts_with("/usr/lib/") || script.starts_with("/usr/share/");
}

std::optional<Invocation> identifyInvocation(std::span<const std::string> commandLine,
                                             const std::string& executable) {
    if (commandLine.empty() || commandLine.front().empty())
        return std::nullopt;
    // What sets its own title writes it over its arguments: "nginx: master process nginx".
    const std::string& first = commandLine.front();
    const std::string_view program = baseName(std::string_view(first).substr(0, first.find(':')));
    // Erlang's machine calls itself after the script that it runs.
    constexpr std::string_view kErlang = "beam.smp";
    const std::string_view name =
        baseName(executable) == kErlang ? kErlang : withoutVersion(program);
    // One's own program may be called "echo" as well.
    if ((isWordOf(kNever, name) && isOfSystem(executable)) || name.starts_with('-'))
        return std::nullopt;

    for (const Interpreter& interpreter : kInterpreters) {
        if (interpreter.name != name)
            continue;
        Invocation invocation = readInterpreted(interpreter, commandLine);
        const bool runsNothing = invocation.tool.empty() && invocation.inlineSource.empty();
        if (runsNothing || invocation.script.ends_with(kDebuggersOwn))
            return std::nullopt;
        if (const auto carried = carriedCommand(invocation, commandLine.front())) {
            auto inner = identifyInvocation(*carried, executable);
            const auto listen = std::ranges::find(invocation.arguments, "--listen");
            if (inner && invocation.tool == "debugpy" && listen != invocation.arguments.end() &&
                std::next(listen) != invocation.arguments.end())
                inner->debugger = *std::next(listen);
            return inner;
        }
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
        const auto isOfBuild = [](const std::string& word) {
            return word.find("org.gradle.") != std::string::npos ||
                   word.find("plexus.classworlds") != std::string::npos;
        };
        // What builds starts the program that it has built as one of its own.
        if (name == "java" && std::ranges::any_of(commandLine, isOfBuild))
            return std::nullopt;
        if (name == "java") {
            invocation.script = javaProgram(commandLine);
            takeJavaClassPath(invocation);
            for (const std::string& word : commandLine) {
                if (invocation.debugger.empty())
                    invocation.debugger = debuggerOfJava(word);
            }
        }
        if (name == "beam.smp")
            readErlang(invocation);
    } else if (name == "R") {
        for (const std::string& word : invocation.arguments) {
            if (word.starts_with("--file="))
                invocation.script = word.substr(7);
        }
        invocation.genericTool = genericToolOf(name);
    } else if (!isOfSystem(executable)) {
        invocation.genericTool = kBuiltProgram;
    }
    return invocation;
}

} // namespace zenlot
