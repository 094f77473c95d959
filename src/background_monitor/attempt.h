// A process that was just started and may want to listen on a port.
#pragma once

#include "background_monitor/runtime_table.h"
#include "background_monitor/settings_text.h"
#include "background_monitor/stage.h"
#include "background_monitor/wanted_port.h"
#include "inventory/process_tables.h"
#include "posix/file_descriptor.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zenlot {

// Since the start of the machine, its sleep included.
using BootTime = std::chrono::milliseconds;

struct Attempt {
    ProcessId pid{0};
    std::vector<ProcessId> ancestors; // the parent first
    // The process on whose behalf it runs: the uppermost one below a terminal's own. A watcher that
    // restarts its server stays the origin of all its attempts.
    ProcessId origin{0};
    BootTime processStartedAt{0}; // tells it from others that had or will have its id
    BootTime startedAt{0};        // later, where a shell became the program after other work
    const Runtime* runtime{nullptr};
    WantedPort wanted;
    // Where it is to wait for a debugger, which it asks for before everything else.
    std::optional<WantedPort> debugger;
    std::size_t commandKey{0}; // the same for the same command in the same folder
    // Where to look for ports that are written down, in memory only.
    std::string home;
    std::string workingDirectory;
    std::string executable;
    std::vector<std::string> arguments;        // of the tool
    std::vector<Setting> environment;          // the variables that hold a port
    std::vector<std::string> environmentFiles; // that the arguments name
    std::vector<std::string> classPath;        // of Java's machine
    std::string libraries;                     // on it
    std::string stage{kUsualStage};
    std::string script;
    std::string inlineSource;
    std::string config;
    // The program itself, when the user built it: `go run` removes its file as soon as it ends.
    std::shared_ptr<const FileDescriptor> program;
};

} // namespace zenlot
