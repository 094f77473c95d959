// SIGTERM, SIGINT and SIGHUP as a wish to quit that comes through the event loop.
//
//     TerminationSignals termination; // at the very start
//     QCoreApplication application(argc, argv);
//     termination.follow([] { QCoreApplication::quit(); });
//
// A signal that comes before there is a loop is reported by it, if that begins soon. Each signal is
// reported once; a second one of its kind ends a program that does not react in the way the system
// always does, and one that has not ended after kPatience ends by itself. Signals that were ignored
// when the program started (a job in the background of a shell, nohup) stay ignored. Child
// processes get the system's own handling. One object per program, on the main thread; signals have
// their old handling back at its end.
#pragma once

#include <QSocketNotifier>

#include <array>
#include <chrono>
#include <csignal>
#include <functional>
#include <optional>

namespace zenlot {

class TerminationSignals final {
  public:
    static constexpr std::chrono::seconds kPatience{5};

    TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

    // Needs the application object. Called once.
    void follow(std::function<void()> handler);

  private:
    static constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

    std::optional<QSocketNotifier> notifier_;
    std::array<struct sigaction, kSignals.size()> earlier_{};
};

} // namespace zenlot
