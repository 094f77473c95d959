#include "background_monitor/attempt_reader.h"

#include "background_monitor/port_text.h"
#include "inventory/programs/invocation.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <ctime>
#include <functional>
#include <iterator>
#include <sstream>
#include <string_view>
#include <utility>

namespace zenlot {
namespace {

constexpr std::size_t kMostBytes = std::size_t{128} * 1024;
constexpr std::size_t kMostSourceBytes = std::size_t{16} * 1024;
constexpr int kMostAncestors = 32;
constexpr std::size_t kMostArguments = 64;
constexpr std::size_t kMostArgumentBytes = std::size_t{4} * 1024;
constexpr std::size_t kMostVariables = 24;
constexpr std::size_t kLongestVariable = 200;

// The first bytes of a file of the user's own processes; none for another user's.
std::optional<std::string> readOwned(const std::string& path, UserId user) {
    const FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    struct stat status {};
    if (!file || ::fstat(file.get(), &status) != 0 || status.st_uid != user)
        return std::nullopt;
    std::string text;
    std::array<char, 4096> buffer;
    for (;;) {
        const ssize_t length = ::read(file.get(), buffer.data(), buffer.size());
        if (length <= 0 || text.size() >= kMostBytes)
            return text;
        text.append(buffer.data(), static_cast<std::size_t>(length));
    }
}

std::vector<std::string> splitAtZeros(const std::string& text) {
    std::vector<std::string> words;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\0', start), text.size());
        words.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

std::string valueOf(const std::string& environment, const std::string& name) {
    const std::string start = name + "=";
    for (std::size_t place = 0; place < environment.size();) {
        const std::size_t end = std::min(environment.find('\0', place), environment.size());
        if (environment.compare(place, start.size(), start) == 0)
            return environment.substr(place + start.size(), end - place - start.size());
        place = end + 1;
    }
    return {};
}

// Many attempts are kept at a time.
std::vector<std::string> bounded(const std::vector<std::string>& words) {
    std::vector<std::string> kept;
    std::size_t bytes = 0;
    for (const std::string& word : words) {
        bytes += word.size();
        if (kept.size() >= kMostArguments || bytes > kMostArgumentBytes)
            break;
        kept.push_back(word);
    }
    return kept;
}

std::vector<Setting> variablesWithPorts(const std::string& environment) {
    std::vector<Setting> variables;
    for (std::size_t place = 0; place < environment.size();) {
        const std::size_t end = std::min(environment.find('\0', place), environment.size());
        const std::string_view variable = std::string_view(environment).substr(place, end - place);
        place = end + 1;
        const std::size_t equals = variable.find('=');
        if (equals == std::string_view::npos || variable.size() > kLongestVariable)
            continue;
        const std::string_view value = variable.substr(equals + 1);
        const auto endpoint = parseEndpoint(value);
        if (endpoint && endpoint->port != 0 && variables.size() < kMostVariables)
            variables.push_back({std::string(variable.substr(0, equals)), std::string(value)});
    }
    return variables;
}

// What variables such as GUNICORN_CMD_ARGS add to the arguments.
std::vector<std::string> inheritedArguments(const Invocation& invocation,
                                            const std::string& environment) {
    std::vector<std::string> words;
    for (const std::string& variable : splitAtZeros(environment)) {
        const std::size_t equals = variable.find('=');
        if (equals == std::string::npos ||
            !addsArguments(invocation, std::string_view(variable).substr(0, equals)))
            continue;
        std::istringstream value(variable.substr(equals + 1));
        words.insert(words.end(), std::istream_iterator<std::string>(value), {});
    }
    return words;
}

std::string stageOf(const std::vector<std::string>& arguments, const std::string& environment) {
    constexpr std::string_view kProfile = "spring.profiles.active=";
    for (const std::string& word : arguments) {
        const std::size_t profile = word.find(kProfile);
        if (profile != std::string::npos)
            return word.substr(profile + kProfile.size(), kLongestVariable);
    }
    for (const char* name : kStageVariables) {
        const std::string stage = valueOf(environment, name);
        if (!stage.empty())
            return inSmallLetters(stage.substr(0, kLongestVariable));
    }
    return std::string(kUsualStage);
}

std::size_t keyOf(const Invocation& invocation, const std::string& workingDirectory) {
    // What `go run` builds lies in another folder every time.
    std::string text = workingDirectory + '\0' + invocation.tool + '\0' +
                       invocation.script.substr(invocation.script.rfind('/') + 1) + '\0' +
                       invocation.inlineSource;
    for (const std::string& argument : invocation.arguments)
        text += '\0' + argument;
    return std::hash<std::string>()(text);
}

} // namespace

AttemptReader::AttemptReader(const RuntimeTable& table, std::string home, UserId user,
                             const std::string& procRoot)
    : table_(table), home_(std::move(home)), user_(user), procRoot_(procRoot), procFiles_(procRoot),
      ownNetwork_(link(::getpid(), "ns/net")) {}

std::optional<Attempt> AttemptReader::read(ProcessId pid) const {
    const std::string folder = procRoot_ + "/" + std::to_string(pid);
    const auto commandLine = readOwned(folder + "/cmdline", user_);
    if (!commandLine || commandLine->empty())
        return std::nullopt;
    const std::vector<std::string> words = splitAtZeros(*commandLine);
    const std::string executable = procFiles_.executablePath(pid);
    auto invocation = identifyInvocation(words, executable);
    const Runtime* runtime = invocation ? table_.find(*invocation) : nullptr;
    if (!runtime)
        return std::nullopt;

    const std::string environment = readOwned(folder + "/environ", user_).value_or(std::string());
    invocation->inherited = inheritedArguments(*invocation, environment);
    const auto wanted = wantedPort(*runtime, *invocation, [&environment](const std::string& name) {
        return valueOf(environment, name);
    });
    if (!wanted || link(pid, "ns/net") != ownNetwork_)
        return std::nullopt;

    Attempt attempt;
    attempt.pid = pid;
    attempt.runtime = runtime;
    attempt.wanted = *wanted;
    if (const auto endpoint = parseEndpoint(invocation->debugger); endpoint && endpoint->port != 0)
        attempt.debugger =
            WantedPort{WantedPort::Source::argument, endpoint->port, addressesOf(endpoint->host)};
    attempt.home = home_;
    attempt.workingDirectory = link(pid, "cwd");
    attempt.executable = executable;
    attempt.arguments = bounded(invocation->arguments);
    attempt.environment = variablesWithPorts(environment);
    attempt.environmentFiles = bounded(invocation->environmentFiles);
    attempt.classPath = bounded(invocation->classPath);
    attempt.libraries = invocation->libraries;
    attempt.stage = stageOf(invocation->arguments, environment);
    // Many attempts are kept at a time, and no path is longer than that.
    attempt.script = invocation->script.substr(0, PATH_MAX);
    attempt.inlineSource = invocation->inlineSource.substr(0, kMostSourceBytes);
    attempt.config = namedConfig(*runtime, *invocation).substr(0, PATH_MAX);
    if (invocation->genericTool == kBuiltProgram && runtime->mayNamePortItself)
        attempt.program = std::make_shared<const FileDescriptor>(
            ::open((folder + "/exe").c_str(), O_RDONLY | O_CLOEXEC));
    attempt.commandKey = keyOf(*invocation, attempt.workingDirectory);
    readFamily(attempt);
    if (attempt.startedAt == BootTime(0))
        return std::nullopt;
    return attempt;
}

void AttemptReader::readFamily(Attempt& attempt) const {
    ProcessId pid = attempt.pid;
    bool isBelowTerminal = true;
    attempt.origin = pid;
    for (int distance = 0; distance <= kMostAncestors && pid > 1; ++distance) {
        const auto stat = procFiles_.stat(pid);
        if (!stat)
            return;
        if (pid == attempt.pid)
            attempt.startedAt = attempt.processStartedAt = bootTimeOfTicks(stat->startTicks);
        else
            attempt.ancestors.push_back(pid);
        // The shell of a terminal, or the manager of the user's services, starts many things that
        // have nothing to do with each other.
        const bool isShell = stat->hasTerminal && stat->sessionLeader == pid;
        isBelowTerminal &= !isShell && stat->parentPid > 1;
        if (isBelowTerminal)
            attempt.origin = pid;
        pid = stat->parentPid;
    }
}

std::string AttemptReader::link(ProcessId pid, const char* name) const {
    const std::string path = procRoot_ + "/" + std::to_string(pid) + "/" + name;
    std::array<char, PATH_MAX> target;
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    return length > 0 ? std::string(target.data(), static_cast<std::size_t>(length))
                      : std::string();
}

BootTime bootTimeOfTicks(std::int64_t startTicks) {
    const std::int64_t rate = std::max(1L, ::sysconf(_SC_CLK_TCK));
    return BootTime(startTicks * 1000 / rate);
}

BootTime bootTimeNow() {
    timespec now{};
    ::clock_gettime(CLOCK_BOOTTIME, &now);
    return std::chrono::duration_cast<BootTime>(std::chrono::seconds(now.tv_sec) +
                                                std::chrono::nanoseconds(now.tv_nsec));
}

} // namespace zenlot
