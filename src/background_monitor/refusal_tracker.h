// Decides which refused binds are told, where the kernel tells of them through zenlot-bindwatch.
//
// That a port was refused, and to whom, is given then. What is left is the holder, and whether the
// program wanted to serve there or only tried. It is judged by what it does next:
//
//   - it ends: told at once;
//   - it listens on another port and stays there: told, it is a server that took another one;
//   - it takes other ports as well but lets go of them: not told, it looks for a free one, unless
//   it
//     is a tool that is known to want this port. What it opened for good before it gave up is no
//     such port. One that comes back for the first port, or that looked only to say which of the
//     next is free, and ends with an error at once, is told all the same;
//   - it gets the port after all, on an overlapping address: not told;
//   - it does nothing of this: told, once, however often it tries again.
//
// Ports that follow each other are one attempt, and the first of them is the one that was wanted.
// Whoever is refused by its own socket, or by that of an ancestor or descendant, is not told of.
//
// Pure: it is told of events with their times, and asks PortHolders. Bounded in what it remembers
// and in how often it asks.
#pragma once

#include "background_monitor/attempt_tracker.h"
#include "background_monitor/port_holders.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

namespace zenlot {

class RefusalTracker {
  public:
    // So long what a program does next is waited for.
    static constexpr BootTime kNextSteps{300};
    static constexpr BootTime kMostNextSteps{2000};
    // So long one that looked for a free port may come to listen on one.
    static constexpr BootTime kLaterUse{60'000};
    static constexpr BootTime kLoopPause{60'000};
    static constexpr int kMostQuestionsPerSecond = 100;

    // `holders` must outlive the tracker.
    explicit RefusalTracker(const PortHolders& holders);

    void happened(const BindEvent& event, BootTime now);

    // When look() should be called next; none while there is nothing to decide.
    std::optional<BootTime> nextLook() const;
    std::vector<Verdict> look(BootTime now);

    // Whether somebody was refused the port within the last minute, told or not; of a process, or a
    // child of it, where one is named.
    bool knows(std::uint16_t port, BootTime now, std::optional<ProcessId> who = std::nullopt) const;

  private:
    struct Refused {
        enum class State : std::uint8_t {
            open,
            told,
            tried,  // the program only tried, or so it seemed
            ofOwn,  // or of nobody
            further // of a row of ports that began with another
        };

        std::uint16_t port{0};
        BindEvent event{};
        BootTime at{0};
        BootTime lastAt{0};
        State state{State::open};
        bool isKnownToWant{false};
        PortHolder holder;
    };
    // Another port that the program took after it had been refused one.
    struct Taken {
        std::uint16_t port{0};
        ProcessId by{0};
        bool isKernelChosen{false};
        BootTime at{0};
        std::optional<BootTime> listensSince;
        std::optional<BootTime> letGoAt;
    };
    struct Process {
        ProcessId pid{0};
        std::uint64_t startedAt{0};
        ProcessId parent{0};
        std::uint32_t network{0};
        std::string command;
        std::size_t commandKey{0};
        std::vector<Refused> refused;
        std::vector<Taken> taken;
        std::optional<BootTime> nextLook;
        std::optional<BootTime> endedAt;
        bool hasFailed{false}; // ended with a status of its own that is not 0, or by a crash
        BootTime lastAt{0};
    };
    struct Announcement {
        std::string command;
        std::size_t commandKey;
        ProcessId pid;
        ProcessId parent;
        std::uint32_t network;
        std::uint16_t port;
        ProcessId holder;
        BootTime announcedAt;
        BootTime lastAt;
    };

    void noteRefused(const BindEvent& event, BootTime at, BootTime now);
    void noteTaken(const BindEvent& event, BootTime at);
    void noteLetGo(const BindEvent& event, BootTime at);
    void noteEnd(const BindEvent& event, BootTime at, BootTime now);
    static bool gaveUp(const Process& process, const Refused& refused);
    Process& processOf(const BindEvent& event);
    bool mayAsk(BootTime now);
    void decide(Process& process, BootTime now, std::vector<Verdict>& verdicts);
    bool announce(const Process& process, const Refused& refused);

    const PortHolders& holders_;
    std::deque<Process> processes_;
    std::vector<Announcement> announcements_;
    BootTime secondStart_{-1'000'000};
    int questionsInSecond_{0};
};

} // namespace zenlot
