// SIGTERM, SIGINT and SIGHUP as a wish to quit that comes through the event loop.
//
//     TerminationSignals termination([] { QCoreApplication::quit(); });
//
// Each signal is reported once; a second one of its kind ends a program that does not react in the
// way the system always does. Signals that were ignored when the program started (a job in the
// background of a shell, nohup) stay ignored. Child processes get the system's own handling. One
// object per program, on the main thread, built after the application object; signals have their
// old handling back at its end.
#pragma once

#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <functional>

namespace zenlot {

class TerminationSignals final {
  public:
    explicit TerminationSignals(std::function<void()> handler);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

  private:
    static constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

    QSocketNotifier notifier_;
    std::array<struct sigaction, kSignals.size()> earlier_{};
};

} // namespace zenlot
