#include "platform/linux/termination_signals.h"

#include "platform/linux/exit_deadline.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstddef>
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
    exitWithin(isFollowed ? TerminationSignals::kPatience : kLongestEnd, 0);
    errno = error;
}

} // namespace

TerminationSignals::TerminationSignals() {
    signalCounter = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    struct sigaction action {};
    action.sa_handler = count;
    action.sa_flags = SA_RESETHAND | SA_RESTART;
    for (std::size_t index = 0; index < kSignals.size(); ++index) {
        ::sigaction(kSignals[index], nullptr, &earlier_[index]);
        if (earlier_[index].sa_handler != SIG_IGN)
            ::sigaction(kSignals[index], &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals() {
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
}

} // namespace zenlot
