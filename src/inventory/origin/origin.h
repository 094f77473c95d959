// Which server it is that listens on a port: its project, what it runs, who started it, what it
// belongs to and whom it lets in. A plain value, true of the moment at which it was collected; what
// could not be learned is empty.
//
// Texts come from other processes, as UTF-8 with U+FFFD for what is not. Whoever shows them escapes
// them.
#pragma once

#include "inventory/listening_socket.h"
#include "inventory/process_identity.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zenlot {

struct Project {
    enum class Head : std::uint8_t { none, branch, detached };

    std::string name;   // "shop", or "shop/packages/web" for a part of a repository
    std::string folder; // where its manifest or its repository is
    Head head{Head::none};
    std::string branch;    // or the beginning of the commit
    bool isDeleted{false}; // the folder that the server was started in is no more

    friend bool operator==(const Project&, const Project&) = default;
};

// What people know a program as, when they ask what started another one.
enum class ProgramKind : std::uint8_t {
    other,
    scriptRunner, // runs what a project's file names: npm, make
    watcher,      // starts its program again: nodemon
    shell,
    shellScript, // a shell that nobody types into
    multiplexer,
    terminal,
    editor,
    codingAgent,
    browser,
    remoteLogin,
    cron,
    session, // of the desktop or the login, or a part of it
    serviceManager,
    supervisor, // keeps programs running: supervisord
};

struct Starter {
    ProcessIdentity process;
    ProgramKind kind{ProgramKind::other};
    std::string name; // "npm run dev", "zsh", "tmux"

    friend bool operator==(const Starter&, const Starter&) = default;
};

// A unit of the service manager, of the system's or of a user's own.
struct Unit {
    enum class Manager : std::uint8_t { system, user };

    Manager manager{Manager::system};
    std::string name; // "postgresql@15-main.service"
    UserId user{0};   // whose manager it is

    friend bool operator==(const Unit&, const Unit&) = default;
};

struct Container {
    std::string engine; // "docker", "podman"; empty when not known
    std::string id;     // all 64 digits, where they are known
    std::string name;
    std::string image;
    std::string composeProject;
    std::string composeService;
    std::uint16_t innerPort{0}; // that the port is published for; 0 when not known

    friend bool operator==(const Container&, const Container&) = default;
};

enum class Reach : std::uint8_t { unknown, thisMachine, network };

// An address of this machine that others may know.
struct NetworkAddress {
    IpAddress address;
    std::string interface;
    bool isWireless{false};
    std::string network{}; // the name of a wireless one, where somebody tells it

    friend bool operator==(const NetworkAddress&, const NetworkAddress&) = default;
};

// Why a server looks as if nobody wanted it any more.
enum class LeftBehindReason : std::uint8_t { folderDeleted, noTerminal, starterEnded, sessionOver };

struct Origin {
    std::uint16_t port{0};
    // The process to speak of: of several that share the sockets, the one that started the others.
    // Its pid is 0 where the user may not see it.
    ProcessIdentity process;
    UserId user{0};
    std::string processName;
    ProgramKind kind{ProgramKind::other};
    std::string program;     // what runs, as people say it: "next dev"
    std::string commandLine; // what looks like a secret is masked
    std::string workingDirectory;
    std::optional<Project> project;
    std::vector<Starter> startedBy; // the nearest first
    bool hasTerminal{false};
    std::optional<Unit> unit;
    std::optional<Unit> socketUnit; // that the service manager listens for
    std::optional<Container> container;
    std::vector<ListeningSocket> sockets;
    Reach reach{Reach::unknown};
    std::vector<NetworkAddress> reachableAt; // the addresses of this machine that lead to it
    std::vector<ProcessIdentity> owners;     // all that share the sockets, the process first
    std::size_t clients{0};                  // connections to the port
    std::vector<LeftBehindReason> leftBehind;

    friend bool operator==(const Origin&, const Origin&) = default;
};

} // namespace zenlot
