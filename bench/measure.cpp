// Runs one program with its output thrown away and prints what that cost, on one line:
//
//     zenlot-measure PROGRAM [ARGUMENT]...
//     WALL_MICROSECONDS CPU_MICROSECONDS PEAK_MEMORY_KIB EXIT_STATUS
//
// The peak memory that the kernel reports for a process starts at the memory of the process that
// forked it. So the figure is only true for a small program when something still smaller starts
// it; that is why this is no part of the comparing script, and why it is linked statically.
//
// PROGRAM is a path. The exit status of a program that a signal ended is 128 and the signal's
// number, of one that could not be started 127.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>

namespace {

[[noreturn]] void become(char** command) {
    const int nothing = open("/dev/null", O_RDWR);
    if (nothing < 0 || dup2(nothing, STDIN_FILENO) < 0 || dup2(nothing, STDOUT_FILENO) < 0 ||
        dup2(nothing, STDERR_FILENO) < 0)
        _exit(127);
    if (nothing > STDERR_FILENO)
        close(nothing);
    execv(command[0], command);
    _exit(127);
}

long long microseconds(const timeval& time) {
    return static_cast<long long>(time.tv_sec) * 1'000'000 + time.tv_usec;
}

} // namespace

int main(int argumentCount, char** arguments) {
    if (argumentCount < 2) {
        std::fputs("usage: zenlot-measure PROGRAM [ARGUMENT]...\n", stderr);
        return 2;
    }

    const auto start = std::chrono::steady_clock::now();
    const pid_t pid = fork();
    if (pid == 0)
        become(arguments + 1);
    int status = 0;
    rusage usage{};
    pid_t ended = pid;
    if (pid > 0) {
        do {
            ended = wait4(pid, &status, 0, &usage);
        } while (ended < 0 && errno == EINTR);
    }
    if (ended < 0) {
        std::fprintf(stderr, "zenlot-measure: %s\n", std::strerror(errno));
        return 1;
    }
    const auto wall = std::chrono::duration_cast<std::chrono::microseconds>(
        std::chrono::steady_clock::now() - start);

    std::printf("%lld %lld %ld %d\n", static_cast<long long>(wall.count()),
                microseconds(usage.ru_utime) + microseconds(usage.ru_stime), usage.ru_maxrss,
                WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status));
    return 0;
}
