#include "platform/linux/exit_deadline.h"

#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <csignal>

namespace zenlot {
namespace {

// A signal handler reaches nothing but what is global.
std::atomic<int> exitStatus{0};

void exitNow(int /*signal*/) {
    ::_exit(exitStatus);
}

} // namespace

void exitWithin(std::chrono::milliseconds time, int status) {
    exitStatus = status;
    struct sigaction action {};
    action.sa_handler = exitNow;
    ::sigaction(SIGALRM, &action, nullptr);
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    itimerval timer{};
    timer.it_value.tv_sec = seconds.count();
    timer.it_value.tv_usec = std::chrono::microseconds(time - seconds).count();
    ::setitimer(ITIMER_REAL, &timer, nullptr);
}

} // namespace zenlot
