#include "platform/linux/termination_signals.h"

#include "platform/linux/exit_deadline.h"

#include <sys/eventfd.h>
#include <sys/time.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <system_error>
#include <utility>

namespace zenlot {

namespace {

// A signal handler reaches nothing but what is global.
std::atomic<int> signalCounter{-1};
std::atomic<bool> isFollowed{false};

void count(int /*signal*/) {
    const int error = errno;
    ::eventfd_write(signalCounter, 1);
    // Before there is a loop nothing has begun that would have to be ended in order.
    const std::chrono::microseconds time = isFollowed ? TerminationSignals::kPatience : kLongestEnd;
    const auto seconds = std::chrono::floor<std::chrono::seconds>(time);
    itimerval timer{};
    timer.it_value.tv_sec = seconds.count();
    timer.it_value.tv_usec = (time - seconds).count();
    ::setitimer(ITIMER_REAL, &timer, nullptr);
    errno = error;
}

void exitNow(int /*signal*/) {
    ::_exit(0);
}

} // namespace

TerminationSignals::TerminationSignals(Children children) : children_(children) {
    signalCounter = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    struct sigaction action {};
    action.sa_handler = count;
    action.sa_flags = SA_RESETHAND | SA_RESTART;
    for (std::size_t index = 0; index < kSignals.size(); ++index) {
        ::sigaction(kSignals[index], nullptr, &earlier_[index]);
        if (earlier_[index].sa_handler != SIG_IGN)
            ::sigaction(kSignals[index], &action, nullptr);
    }
    struct sigaction alarm {};
    alarm.sa_handler = exitNow;
    ::sigaction(SIGALRM, &alarm, nullptr);

    // While the main thread waits for a disk no signal reaches it. Once there is a loop it waits
    // for none, and its mask is that of child processes.
    sigset_t mask;
    ::sigemptyset(&mask);
    for (const int signal : kSignals)
        ::sigaddset(&mask, signal);
    ::sigaddset(&mask, SIGALRM);
    try {
        thread_ = std::thread([this] { isEnding_.wait(false); });
        ::pthread_sigmask(SIG_BLOCK, &mask, &earlierMask_);
    } catch (const std::system_error&) {
        // Without a thread the main thread takes them.
    }
}

void TerminationSignals::endThread() {
    if (!thread_.joinable())
        return;
    isEnding_ = true;
    isEnding_.notify_all();
    thread_.join();
    ::pthread_sigmask(SIG_SETMASK, &earlierMask_, nullptr);
}

TerminationSignals::~TerminationSignals() {
    endThread();
    for (std::size_t index = 0; index < kSignals.size(); ++index)
        ::sigaction(kSignals[index], &earlier_[index], nullptr);
    notifier_.reset();
    isFollowed = false;
    ::close(signalCounter.exchange(-1));
}

void TerminationSignals::follow(std::function<void()> handler) {
    notifier_.emplace(signalCounter, QSocketNotifier::Read);
    QObject::connect(&*notifier_, &QSocketNotifier::activated, &*notifier_,
                     [handler = std::move(handler)](QSocketDescriptor counter) {
                         eventfd_t signals = 0;
                         if (::eventfd_read(static_cast<int>(counter), &signals) == 0)
                             handler();
                     });
    isFollowed = true;
    if (children_ == Children::some)
        endThread();
}

} // namespace zenlot
