// zenlot-bindwatch: tells each user's programs which of the user's processes were refused a TCP
// port, as the kernel sees it. A small service of the system; it needs CAP_BPF and CAP_PERFMON.
#include "bindwatch/bind_server.h"
#include "bindwatch/kernel/bpf_bind_source.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace zenlot {
namespace {

enum ExitStatus : int { stopped = 0, failed = 1, badUsage = 2 };

constexpr const char* kUsualSocket = "/run/zenlot/binds";

FileDescriptor takeTerminationSignals() {
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGINT);
    ::sigaddset(&signals, SIGTERM);
    ::sigprocmask(SIG_BLOCK, &signals, nullptr);
    return FileDescriptor(::signalfd(-1, &signals, SFD_CLOEXEC));
}

int run(const std::string& path) {
    const FileDescriptor stop = takeTerminationSignals();
    BpfBindSource source;
    if (!source.load()) {
        std::fprintf(stderr, "zenlot-bindwatch: the kernel does not let me watch: %s\n",
                     source.why().c_str());
        return failed;
    }
    FileDescriptor listener = listenForReaders(path);
    if (!listener) {
        std::fprintf(stderr, "zenlot-bindwatch: can't serve %s: %s\n", path.c_str(),
                     std::strerror(errno));
        return failed;
    }
    std::fprintf(stderr, "zenlot-bindwatch: serves %s, watching %s\n", path.c_str(),
                 source.method() == BpfBindSource::Method::functions ? "the kernel's functions"
                                                                     : "system calls");
    BindServer server(source, std::move(listener));
    while (server.serve(std::chrono::milliseconds(-1), stop.get()))
        continue;
    ::unlink(path.c_str());
    return stopped;
}

} // namespace
} // namespace zenlot

int main(int argc, char** argv) {
    const std::span words(argv, static_cast<std::size_t>(argc));
    std::string path = zenlot::kUsualSocket;
    if (argc == 3 && std::string_view(words[1]) == "--socket") {
        path = words[2];
    } else if (argc == 2 && std::string_view(words[1]) == "--version") {
        std::puts("zenlot-bindwatch " ZENLOT_VERSION);
        return zenlot::stopped;
    } else if (argc != 1) {
        const bool isAsked = argc == 2 && std::string_view(words[1]) == "--help";
        std::fputs(
            "Usage: zenlot-bindwatch [--socket PATH] | --version | --help\n"
            "Tells the programs of each user which of the user's processes were refused a TCP "
            "port.\n"
            "  --socket PATH  where they may ask, instead of /run/zenlot/binds\n",
            isAsked ? stdout : stderr);
        return isAsked ? zenlot::stopped : zenlot::badUsage;
    }
    return zenlot::run(path);
}
