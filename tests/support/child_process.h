// A process that does nothing until it is ended, and is collected by then.
#pragma once

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <optional>
#include <string>

namespace zenlot {

class ChildProcess {
  public:
    // A copy of this process, which first does something: it ends when that returns false.
    template <typename Preparation>
    explicit ChildProcess(Preparation prepare) : pid_(::fork()) {
        if (pid_ == 0) {
            ::prctl(PR_SET_PDEATHSIG, SIGKILL); // should the test crash
            ::_exit(prepare() ? ::pause() : 1);
        }
    }
    ChildProcess() : ChildProcess([] { return true; }) {}
    ChildProcess(ChildProcess&& other) noexcept : pid_(other.pid_) { other.pid_ = 0; }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ChildProcess& operator=(ChildProcess&&) = delete;
    ~ChildProcess() { end(); }

    // A process with the id of one that has ended; none where the kernel does not let the test
    // choose, or when others are always quicker.
    static std::optional<ChildProcess> withId(pid_t wanted) {
        for (int attempt = 0; attempt < 2000; ++attempt) {
            std::ofstream last("/proc/sys/kernel/ns_last_pid");
            last << wanted - 1 << std::flush;
            if (!last)
                return std::nullopt;
            if (ChildProcess child; child.pid() == wanted)
                return child;
        }
        return std::nullopt;
    }

    pid_t pid() const { return pid_; }

    bool isRunning() const {
        siginfo_t info{};
        return ::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT | WNOHANG) == 0 &&
               info.si_pid == 0;
    }

    // Whether nobody has tried to end it. The signal that ends it now would come too late if one
    // had been sent before, also one that has not had its effect yet.
    bool wasLeftAlone() const {
        ::kill(pid_, SIGUSR1);
        return waitForSignal() == SIGUSR1;
    }

    // The signal that has ended it, once it has; 0 for another end. It is not collected by that.
    int waitForSignal() const {
        siginfo_t info{};
        ::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT);
        return info.si_code == CLD_KILLED ? info.si_status : 0;
    }

    // Ends it when processes that start from now on have another start: the kernel tells it by the
    // hundredth of a second.
    void endAndLetTimePass() {
        for (const std::string mine = start(); ChildProcess().start() == mine;)
            continue;
        end();
    }

    // Its id is free then.
    void end() {
        if (pid_ <= 0)
            return;
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
        pid_ = 0;
    }

  private:
    // Behind the name, which nobody has changed here.
    std::string start() const {
        std::ifstream stat("/proc/" + std::to_string(pid_) + "/stat");
        std::string word;
        for (int place = 0; place < 22; ++place)
            stat >> word;
        return word;
    }

    pid_t pid_;
};

} // namespace zenlot
