// A process that does nothing until it is ended, and is collected by then.
#pragma once

#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

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
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess() { end(); }

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

    // Its id is free then.
    void end() {
        if (pid_ <= 0)
            return;
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
        pid_ = 0;
    }

  private:
    pid_t pid_;
};

} // namespace zenlot
