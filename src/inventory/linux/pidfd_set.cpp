#include "inventory/linux/pidfd_set.h"

#include <sys/epoll.h>
#include <sys/syscall.h>

#include <algorithm>
#include <array>
#include <utility>

namespace zenlot {

PidfdSet::PidfdSet() : epoll_(::epoll_create1(EPOLL_CLOEXEC)) {}

void PidfdSet::assign(std::vector<ProcessId> pids) {
    std::ranges::sort(pids);
    pids.erase(std::unique(pids.begin(), pids.end()), pids.end());
    if (pids.size() > kMost)
        pids.resize(kMost);
    // A descriptor that is closed leaves the set by itself.
    std::erase_if(watched_, [&pids](const auto& process) {
        return !std::ranges::binary_search(pids, process.first);
    });
    for (const ProcessId pid : pids) {
        if (watched_.contains(pid))
            continue;
        FileDescriptor pidfd(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
        epoll_event event{};
        event.events = EPOLLIN;
        event.data.fd = pid;
        if (pidfd && ::epoll_ctl(epoll_.get(), EPOLL_CTL_ADD, pidfd.get(), &event) == 0)
            watched_.emplace(pid, std::move(pidfd));
    }
}

std::vector<ProcessId> PidfdSet::takeEnded() {
    std::vector<ProcessId> ended;
    std::array<epoll_event, 64> events{};
    for (;;) {
        const int count = ::epoll_wait(epoll_.get(), events.data(), events.size(), 0);
        if (count <= 0)
            return ended;
        for (int place = 0; place < count; ++place) {
            const ProcessId pid = events[static_cast<std::size_t>(place)].data.fd;
            ended.push_back(pid);
            watched_.erase(pid);
        }
    }
}

} // namespace zenlot
