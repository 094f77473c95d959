// Makes a machine busy in a known way, to measure on: a number of processes that together hold a
// number of descriptors and of TCP listeners.
//
//     zenlot-load --processes 600 --descriptors 40000 --listeners 1200 [--user UID]
//     ready processes=600 descriptors=40000 listeners=1200
//
// The line appears when everything is up; its figures are counted, not repeated. The load then
// stands still until standard input closes or SIGTERM, SIGINT or SIGHUP arrives, and nothing of it
// is left behind, not even when this program is killed. Exit status: 0 when it was asked to stop,
// 1 when the load could not be made or one of its processes ended, 2 for bad usage.
//
// Descriptors and listeners are spread evenly. The descriptors count standard input, output and
// error of every process and its listeners; the others follow kMix. Listeners stand on 127.0.0.1
// and ::1 in turn, on ports that the kernel chooses, no two on the same port. Nobody connects.
#include <fcntl.h>
#include <getopt.h>
#include <grp.h>
#include <netinet/in.h>
#include <poll.h>
#include <pwd.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/signalfd.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace zenlot {
namespace {

constexpr const char* kUsage =
    "usage: zenlot-load --processes N --descriptors N --listeners N [--user UID]";

// What every process has before it opens anything.
constexpr int kStandardDescriptors = 3;

struct Load {
    int processes{0};
    int descriptors{0};
    int listeners{0};
    std::optional<uid_t> user;
};

struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

[[noreturn]] void fail(const std::string& what) {
    throw std::system_error(errno, std::generic_category(), what);
}

int checked(int result, const char* what) {
    if (result < 0)
        fail(what);
    return result;
}

class FileDescriptor {
  public:
    explicit FileDescriptor(int number) : number_(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    ~FileDescriptor() {
        if (number_ >= 0)
            close(number_);
    }

    int number() const { return number_; }

  private:
    int number_;
};

// ---- usage -------------------------------------------------------------------------------------

template <typename Number>
Number parseNumber(const std::string& option, std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < Number{})
        throw UsageError(option + " needs a number, not \"" + std::string(text) + "\"");
    return number;
}

// None when the usage was asked for.
std::optional<Load> parseArguments(int argumentCount, char** arguments) {
    const std::array options{
        option{"processes", required_argument, nullptr, 'p'},
        option{"descriptors", required_argument, nullptr, 'd'},
        option{"listeners", required_argument, nullptr, 'l'},
        option{"user", required_argument, nullptr, 'u'},
        option{"help", no_argument, nullptr, 'h'},
        option{nullptr, 0, nullptr, 0},
    };
    std::optional<int> processes;
    std::optional<int> descriptors;
    std::optional<int> listeners;
    Load load;
    opterr = 0;
    for (;;) {
        const int chosen = getopt_long(argumentCount, arguments, ":", options.data(), nullptr);
        if (chosen == -1)
            break;
        switch (chosen) {
        case 'p':
            processes = parseNumber<int>("--processes", optarg);
            break;
        case 'd':
            descriptors = parseNumber<int>("--descriptors", optarg);
            break;
        case 'l':
            listeners = parseNumber<int>("--listeners", optarg);
            break;
        case 'u':
            load.user = parseNumber<uid_t>("--user", optarg);
            break;
        case 'h':
            return std::nullopt;
        case ':':
            throw UsageError(std::string(arguments[optind - 1]) + " needs a value");
        default:
            throw UsageError("unknown option " + std::string(arguments[optind - 1]));
        }
    }
    if (optind < argumentCount)
        throw UsageError("unexpected argument " + std::string(arguments[optind]));
    if (!processes || !descriptors || !listeners)
        throw UsageError("--processes, --descriptors and --listeners are all needed");
    if (*processes == 0)
        throw UsageError("--processes must be at least 1");
    load.processes = *processes;
    load.descriptors = *descriptors;
    load.listeners = *listeners;
    // The process with the most listeners must get along with the smallest share of descriptors.
    const std::int64_t needed =
        (kStandardDescriptors +
         (std::int64_t{load.listeners} + load.processes - 1) / load.processes) *
        load.processes;
    if (load.descriptors < needed)
        throw UsageError("--descriptors must be at least " + std::to_string(needed) +
                         " for so many processes and listeners");
    return load;
}

// The part of `total` that falls to the process with this index.
int share(int total, int index, int processes) {
    return total / processes + (index < total % processes ? 1 : 0);
}

// ---- preparations ------------------------------------------------------------------------------

void allowDescriptors(int perProcess) {
    // A few more, for what is open only while the load is made.
    const rlim_t needed = static_cast<rlim_t>(perProcess) * 2 + 16;
    rlimit limit{};
    checked(getrlimit(RLIMIT_NOFILE, &limit), "can't read the limit on open files");
    if (limit.rlim_cur >= needed)
        return;
    limit.rlim_cur = needed;
    limit.rlim_max = std::max(limit.rlim_max, needed);
    if (setrlimit(RLIMIT_NOFILE, &limit) != 0)
        fail("can't raise the limit on open files to " + std::to_string(needed) +
             "; ask for more processes or fewer descriptors");
}

void becomeUser(uid_t user) {
    const passwd* entry = getpwuid(user);
    const gid_t group = entry ? entry->pw_gid : user;
    checked(setgroups(0, nullptr), "can't leave the groups of this user");
    checked(setgid(group), "can't change the group");
    checked(setuid(user), "can't change the user");
    // Whoever changes its user becomes invisible to its own user; a program that was started by
    // that user would not be.
    checked(prctl(PR_SET_DUMPABLE, 1), "can't become visible to the new user");
}

// Descriptors 0 to 2 must be taken, or what is opened next would be mistaken for them.
void fillStandardDescriptors() {
    int number = 0;
    do {
        number = checked(open("/dev/null", O_RDWR), "can't open /dev/null");
    } while (number <= STDERR_FILENO);
    close(number);
}

// ---- listeners ---------------------------------------------------------------------------------

// Hands out listeners on loopback, no two on the same port number.
class ListenerSource {
  public:
    FileDescriptor next() {
        const bool ipv6 = useIpv6_ && nextIsIpv6_;
        nextIsIpv6_ = !nextIsIpv6_;
        // The kernel tells the families apart, so it may hand out a number that is in use here;
        // a sensible number of attempts finds another one.
        for (int attempt = 0; attempt < 1000; ++attempt) {
            std::optional<FileDescriptor> listener = ipv6 ? listenOnIpv6() : listenOnIpv4();
            if (!listener) {
                std::fputs("zenlot-load: no IPv6 loopback here, every listener is on 127.0.0.1\n",
                           stderr);
                useIpv6_ = false;
                return next();
            }
            const std::uint16_t port = localPort(*listener);
            if (!ports_.test(port)) {
                ports_.set(port);
                return std::move(*listener);
            }
        }
        errno = EADDRINUSE;
        fail("can't find another free port");
    }

  private:
    static FileDescriptor listenOnIpv4() {
        FileDescriptor listener(
            checked(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0), "can't open a TCP socket"));
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        checked(bindTo(listener, address), "can't bind a port of 127.0.0.1");
        checked(listen(listener.number(), 1), "can't listen on 127.0.0.1");
        return listener;
    }

    // None when this machine has no such address.
    static std::optional<FileDescriptor> listenOnIpv6() {
        FileDescriptor listener(socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0));
        if (listener.number() < 0 && errno == EAFNOSUPPORT)
            return std::nullopt;
        checked(listener.number(), "can't open a TCP socket");
        sockaddr_in6 address{};
        address.sin6_family = AF_INET6;
        address.sin6_addr = in6addr_loopback;
        const int bound = bindTo(listener, address);
        if (bound < 0 && errno == EADDRNOTAVAIL)
            return std::nullopt;
        checked(bound, "can't bind a port of ::1");
        checked(listen(listener.number(), 1), "can't listen on ::1");
        return listener;
    }

    template <typename Address>
    static int bindTo(const FileDescriptor& listener, const Address& address) {
        return bind(listener.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    }

    static std::uint16_t localPort(const FileDescriptor& listener) {
        sockaddr_in6 address{};
        socklen_t size = sizeof address;
        checked(getsockname(listener.number(), reinterpret_cast<sockaddr*>(&address), &size),
                "can't read the port of a listener");
        static_assert(offsetof(sockaddr_in, sin_port) == offsetof(sockaddr_in6, sin6_port));
        return ntohs(address.sin6_port);
    }

    std::bitset<65536> ports_;
    bool useIpv6_{true};
    bool nextIsIpv6_{false};
};

// ---- one process of the load -------------------------------------------------------------------

enum class Kind : std::uint8_t { file, pipe, unixSockets, eventCounter, unconnectedTcp, epoll };

// What a process holds, over and over: of 20 descriptors 8 files, 4 pipe ends, 4 connected unix
// sockets, 2 event counters, 1 TCP socket without an address and 1 epoll.
constexpr std::array kMix{
    Kind::file,        Kind::file,        Kind::pipe,         Kind::file,
    Kind::unixSockets, Kind::file,        Kind::eventCounter, Kind::file,
    Kind::epoll,       Kind::file,        Kind::pipe,         Kind::unconnectedTcp,
    Kind::file,        Kind::unixSockets, Kind::file,         Kind::eventCounter,
};

// Opens one of the kind, and returns how many descriptors that took.
int openOne(Kind kind) {
    std::array<int, 2> pair{};
    switch (kind) {
    case Kind::file:
        checked(open("/proc/self/exe", O_RDONLY), "can't open a file");
        return 1;
    case Kind::pipe:
        checked(pipe(pair.data()), "can't open a pipe");
        return 2;
    case Kind::unixSockets:
        checked(socketpair(AF_UNIX, SOCK_STREAM, 0, pair.data()), "can't open unix sockets");
        return 2;
    case Kind::eventCounter:
        checked(eventfd(0, 0), "can't open an event counter");
        return 1;
    case Kind::unconnectedTcp:
        checked(socket(AF_INET, SOCK_STREAM, 0), "can't open a TCP socket");
        return 1;
    case Kind::epoll:
        checked(epoll_create1(0), "can't open an epoll");
        return 1;
    }
    return 0;
}

class MixedDescriptors {
  public:
    void open(int count) {
        while (count > 0) {
            const Kind kind = kMix.at(next_++ % kMix.size());
            const bool takesTwo = kind == Kind::pipe || kind == Kind::unixSockets;
            count -= openOne(takesTwo && count == 1 ? Kind::file : kind);
        }
    }

  private:
    std::size_t next_{0};
};

std::vector<int> ownDescriptors() {
    std::vector<int> numbers;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
        numbers.push_back(std::stoi(entry.path().filename().string()));
    return numbers;
}

bool isListener(int number) {
    int accepting = 0;
    socklen_t size = sizeof accepting;
    return getsockopt(number, SOL_SOCKET, SO_ACCEPTCONN, &accepting, &size) == 0 && accepting != 0;
}

// What a process really holds.
struct Report {
    int descriptors{0};
    int listeners{0};
};

void closeInherited(const std::vector<FileDescriptor>& listeners, int report) {
    for (const int number : ownDescriptors()) {
        const bool isOurs = number <= STDERR_FILENO || number == report ||
                            std::any_of(listeners.begin(), listeners.end(),
                                        [number](const FileDescriptor& listener) {
                                            return listener.number() == number;
                                        });
        if (!isOurs)
            close(number);
    }
}

// Opens what this process is to hold, and nothing else, and says so on `report`, which it closes.
void fillProcess(int descriptors, std::vector<FileDescriptor>& listeners, int report) {
    closeInherited(listeners, report);
    const int others = descriptors - kStandardDescriptors - static_cast<int>(listeners.size());
    // A server opens its sockets among other things, neither first nor last.
    MixedDescriptors mixed;
    mixed.open(others / 2);
    std::vector<FileDescriptor> moved;
    moved.reserve(listeners.size());
    for (const FileDescriptor& listener : listeners)
        moved.emplace_back(checked(dup(listener.number()), "can't move a listener"));
    listeners = std::move(moved);
    mixed.open(others - others / 2);
    {
        const FileDescriptor nothing(checked(open("/dev/null", O_RDWR), "can't open /dev/null"));
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            checked(dup2(nothing.number(), standard), "can't leave the terminal");
    }

    const std::vector<int> held = ownDescriptors();
    Report counted;
    // Without the folder that was just read and the way to report, which are as good as gone.
    counted.descriptors = static_cast<int>(held.size()) - 2;
    counted.listeners = static_cast<int>(std::count_if(held.begin(), held.end(), isListener));
    if (write(report, &counted, sizeof counted) != sizeof counted)
        fail("can't report");
    close(report);
}

[[noreturn]] void runProcess(pid_t parent, int descriptors, std::vector<FileDescriptor>& listeners,
                             int report) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    // The parent may have gone before the kernel was asked to watch it.
    if (getppid() != parent)
        _exit(1);
    try {
        fillProcess(descriptors, listeners, report);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zenlot-load: %s\n", error.what());
        _exit(1);
    }
    for (;;)
        pause();
}

// ---- all of them -------------------------------------------------------------------------------

// The processes of the load. They end with this object.
class Processes {
  public:
    Processes() = default;
    Processes(const Processes&) = delete;
    Processes& operator=(const Processes&) = delete;
    ~Processes() {
        for (const pid_t pid : pids_)
            kill(pid, SIGKILL);
        for (const pid_t pid : pids_) {
            while (waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
            }
        }
    }

    Report start(const Load& load) {
        const pid_t self = getpid();
        ListenerSource source;
        Report total;
        for (int index = 0; index < load.processes; ++index) {
            // The parent opens the listeners, because only it knows which ports are taken, and
            // closes its own copies before the next process is made.
            std::vector<FileDescriptor> listeners;
            const int listenerCount = share(load.listeners, index, load.processes);
            listeners.reserve(static_cast<std::size_t>(listenerCount));
            for (int opened = 0; opened < listenerCount; ++opened)
                listeners.push_back(source.next());
            std::array<int, 2> ends{};
            checked(pipe2(ends.data(), O_CLOEXEC), "can't open a pipe");
            const FileDescriptor receiving(ends[0]);
            FileDescriptor reporting(ends[1]);

            const pid_t pid = fork();
            if (pid < 0)
                fail("can't start process " + std::to_string(index + 1) + " of " +
                     std::to_string(load.processes));
            if (pid == 0)
                runProcess(self, share(load.descriptors, index, load.processes), listeners,
                           reporting.number());
            pids_.push_back(pid);
            reporting = FileDescriptor(-1);
            Report report;
            char more = 0;
            if (read(receiving.number(), &report, sizeof report) != sizeof report ||
                read(receiving.number(), &more, 1) != 0)
                throw std::runtime_error("process " + std::to_string(index + 1) + " of " +
                                         std::to_string(load.processes) + " did not come up");
            total.descriptors += report.descriptors;
            total.listeners += report.listeners;
        }
        return total;
    }

  private:
    std::vector<pid_t> pids_;
};

// Signals as something to wait for beside standard input.
class SignalQueue {
  public:
    SignalQueue() {
        sigset_t signals;
        sigemptyset(&signals);
        for (const int signal : {SIGTERM, SIGINT, SIGHUP, SIGCHLD})
            sigaddset(&signals, signal);
        // The processes of the load inherit this, and should: a Control-C in a terminal reaches
        // them as well, but it is for their parent to end them.
        checked(sigprocmask(SIG_BLOCK, &signals, nullptr), "can't block signals");
        queue_ =
            FileDescriptor(checked(signalfd(-1, &signals, SFD_CLOEXEC), "can't await signals"));
    }

    int descriptor() const { return queue_.number(); }

    int take() const {
        signalfd_siginfo info{};
        if (read(queue_.number(), &info, sizeof info) != sizeof info)
            fail("can't read a signal");
        return static_cast<int>(info.ssi_signo);
    }

  private:
    FileDescriptor queue_{-1};
};

// Returns when the load is to go.
void waitForTheEnd(const SignalQueue& signals) {
    for (;;) {
        std::array waits{pollfd{STDIN_FILENO, POLLIN, 0}, pollfd{signals.descriptor(), POLLIN, 0}};
        if (poll(waits.data(), waits.size(), -1) < 0 && errno != EINTR)
            fail("can't wait");
        if (waits[1].revents != 0) {
            if (signals.take() == SIGCHLD)
                throw std::runtime_error("a process of the load has ended");
            return;
        }
        std::array<char, 4096> ignored{};
        if (waits[0].revents != 0 && read(STDIN_FILENO, ignored.data(), ignored.size()) <= 0)
            return;
    }
}

void run(const Load& load) {
    fillStandardDescriptors();
    allowDescriptors(share(load.descriptors, 0, load.processes));
    if (load.user)
        becomeUser(*load.user);
    const SignalQueue signals;
    Processes processes;
    const Report total = processes.start(load);
    std::printf("ready processes=%d descriptors=%d listeners=%d\n", load.processes,
                total.descriptors, total.listeners);
    if (std::fflush(stdout) != 0)
        fail("can't write to standard output");
    waitForTheEnd(signals);
}

} // namespace
} // namespace zenlot

int main(int argumentCount, char** arguments) {
    try {
        const auto load = zenlot::parseArguments(argumentCount, arguments);
        if (load)
            zenlot::run(*load);
        else
            std::puts(zenlot::kUsage);
        return 0;
    } catch (const zenlot::UsageError& error) {
        std::fprintf(stderr, "zenlot-load: %s; %s\n", error.what(), zenlot::kUsage);
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "zenlot-load: %s\n", error.what());
        return 1;
    }
}
