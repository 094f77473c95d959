// SIGTERM, SIGINT and SIGHUP as a wish to quit that comes through the event loop.
//
//     TerminationSignals termination; // at the very start
//     QCoreApplication application(argc, argv);
//     termination.follow([] { QCoreApplication::quit(); });
//
// A signal that comes before there is a loop is reported by it, if that begins soon; else the
// program ends, though its start may wait for a disk that does not answer. Each signal is
// reported once; a second one of its kind ends a program that does not react in the way the system
// always does, and one that has not ended after kPatience ends by itself. Signals that were ignored
// when the program started (a job in the background of a shell, nohup) stay ignored. Child
// processes get the system's own handling. One object per program, on the main thread; signals have
// their old handling back at its end.
#pragma once

#include <QSocketNotifier>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <functional>
#include <optional>
#include <thread>

namespace zenlot {

class TerminationSignals final {
  public:
    static constexpr std::chrono::seconds kPatience{5};

    // A program that starts no others can have its signals taken by a thread all the time, and ends
    // when it is asked whatever its main thread waits for. Others would inherit that.
    enum class Children : std::uint8_t { some, none };

    explicit TerminationSignals(Children children = Children::some);
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    ~TerminationSignals();

    // Needs the application object. Called once.
    void follow(std::function<void()> handler);

  private:
    static constexpr std::array kSignals{SIGTERM, SIGINT, SIGHUP};

    void endThread();

    Children children_;
    std::optional<QSocketNotifier> notifier_;
    std::array<struct sigaction, kSignals.size()> earlier_{};
    sigset_t earlierMask_{};
    std::atomic<bool> isEnding_{false};
    std::thread thread_; // takes the signals
};

} // namespace zenlot
