#include "background_monitor/refusal_tracker.h"

#include "background_monitor/live_port_holders.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <iterator>
#include <utility>

namespace zenlot {
namespace {

constexpr std::size_t kMostProcesses = 512;
constexpr std::size_t kMostPortsOfProcess = 16;
constexpr std::size_t kMostTaken = 64;
constexpr std::size_t kMostAnnouncements = 64;

constexpr int kNextPorts = 10;
// Several processes of one attempt may fail one after the other.
constexpr BootTime kSameAttempt{2000};
// Restarts that follow faster than people do are a loop.
constexpr BootTime kFasterThanPeople{3000};
// Nobody serves for so short a time.
constexpr BootTime kMomentary{50};
// What a program closes so shortly before its end belongs to its end.
constexpr BootTime kPartOfEnd{300};
// A program that looked which of the next ports is free and fails at once only wanted to name it.
constexpr BootTime kAtOnce{20};
// So long a program may still try again for what it was refused.
constexpr BootTime kLongestMemory{600'000};

BootTime timeOf(const BindEvent& event) {
    return std::chrono::duration_cast<BootTime>(std::chrono::nanoseconds(event.happened_at));
}

bool isNear(std::uint16_t wanted, std::uint16_t taken) {
    return taken > wanted && taken <= wanted + kNextPorts;
}

ListeningSocket socketOf(const BindEvent& event) {
    ListeningSocket socket;
    socket.address = addressOf(event);
    socket.isV6Only = (event.flags & ZENLOT_V6_ONLY) != 0;
    socket.port = event.port;
    return socket;
}

} // namespace

RefusalTracker::RefusalTracker(const PortHolders& holders) : holders_(holders) {}

void RefusalTracker::happened(const BindEvent& event, BootTime now) {
    const BootTime at = timeOf(event);
    switch (event.kind) {
    case ZENLOT_BIND_REFUSED:
    case ZENLOT_LISTEN_REFUSED:
        // Who is not permitted was not refused the port by its holder.
        if (event.error == EADDRINUSE)
            noteRefused(event, at, now);
        break;
    case ZENLOT_BOUND:
    case ZENLOT_LISTENING:
        noteTaken(event, at);
        break;
    case ZENLOT_LISTENER_ENDED:
        noteLetGo(event, at);
        break;
    case ZENLOT_PROCESS_ENDED:
        noteEnd(event, at, now);
        break;
    default:
        break;
    }
}

void RefusalTracker::noteRefused(const BindEvent& event, BootTime at, BootTime now) {
    Process& process = processOf(event);
    process.lastAt = at;
    // A second address of the same port is the same wish, and so is another try.
    const auto known = std::ranges::find(process.refused, event.port, &Refused::port);
    if (known != process.refused.end()) {
        known->lastAt = at;
        if (known->state != Refused::State::ofOwn)
            return;
        process.refused.erase(known);
    }
    if (process.refused.size() >= kMostPortsOfProcess || !mayAsk(now))
        return;
    Refused refused{event.port, event, at, at, Refused::State::open, false, {}};
    const bool isFurther = std::ranges::any_of(process.refused, [&](const Refused& earlier) {
        return earlier.state != Refused::State::ofOwn && isNear(earlier.port, event.port) &&
               at - earlier.lastAt <= kMostNextSteps;
    });
    HolderAnswer answer = holders_.holderFor(event);
    if (answer.kind == HolderAnswer::Kind::own || answer.kind == HolderAnswer::Kind::nobody)
        refused.state = Refused::State::ofOwn;
    else if (isFurther)
        refused.state = Refused::State::further;
    refused.holder = std::move(answer.holder);
    refused.isKnownToWant =
        refused.state == Refused::State::open && holders_.isKnownToWant(process.pid, event.port);
    if (refused.state != Refused::State::ofOwn)
        process.nextLook = at + kNextSteps;
    process.refused.push_back(std::move(refused));
}

void RefusalTracker::noteTaken(const BindEvent& event, BootTime at) {
    for (Process& process : processes_) {
        const bool isItself = process.pid == static_cast<ProcessId>(event.process) &&
                              process.startedAt == event.process_started_at;
        if ((!isItself && process.pid != static_cast<ProcessId>(event.parent)) ||
            process.network != event.network_inode)
            continue;
        const auto gotIt = std::ranges::find(process.refused, event.port, &Refused::port);
        if (gotIt != process.refused.end()) {
            if (standsInTheWay(socketOf(event), gotIt->event))
                process.refused.erase(gotIt);
            continue;
        }
        auto taken = std::ranges::find_if(process.taken, [&event](const Taken& each) {
            return each.port == event.port && !each.letGoAt;
        });
        if (taken == process.taken.end()) {
            if (process.taken.size() >= kMostTaken)
                process.taken.erase(process.taken.begin());
            process.taken.push_back({event.port,
                                     static_cast<ProcessId>(event.process),
                                     (event.flags & ZENLOT_KERNEL_CHOSEN) != 0,
                                     at,
                                     {},
                                     {}});
            taken = std::prev(process.taken.end());
        }
        if (event.kind == ZENLOT_LISTENING)
            taken->listensSince = at;
        const auto first = std::ranges::find_if(process.refused, [at](const Refused& each) {
            return each.state == Refused::State::open ||
                   (each.state == Refused::State::tried && at - each.at <= kLaterUse);
        });
        if (first == process.refused.end())
            continue;
        process.nextLook = first->state == Refused::State::open
                               ? std::min(at + kNextSteps, first->at + kMostNextSteps)
                               : at + kNextSteps;
    }
}

void RefusalTracker::noteLetGo(const BindEvent& event, BootTime at) {
    for (Process& process : processes_) {
        if (process.network != event.network_inode)
            continue;
        for (Taken& taken : process.taken) {
            if (taken.port == event.port && taken.listensSince && !taken.letGoAt)
                taken.letGoAt = at;
        }
    }
}

void RefusalTracker::noteEnd(const BindEvent& event, BootTime at, BootTime now) {
    for (Process& process : processes_) {
        if (process.pid != static_cast<ProcessId>(event.process) ||
            process.startedAt != event.process_started_at || process.endedAt)
            continue;
        process.endedAt = at;
        process.hasFailed = event.error != 0;
        process.nextLook = now;
    }
}

RefusalTracker::Process& RefusalTracker::processOf(const BindEvent& event) {
    const auto known = std::ranges::find_if(processes_, [&event](const Process& process) {
        return process.pid == static_cast<ProcessId>(event.process) &&
               process.startedAt == event.process_started_at;
    });
    if (known != processes_.end())
        return *known;
    if (processes_.size() >= kMostProcesses)
        processes_.pop_front();
    Process process;
    process.pid = static_cast<ProcessId>(event.process);
    process.startedAt = event.process_started_at;
    process.parent = static_cast<ProcessId>(event.parent);
    process.network = event.network_inode;
    process.command = commandOf(event);
    process.commandKey = holders_.commandKeyOf(process.pid);
    return processes_.emplace_back(std::move(process));
}

bool RefusalTracker::mayAsk(BootTime now) {
    if (now - secondStart_ >= std::chrono::seconds(1)) {
        secondStart_ = now;
        questionsInSecond_ = 0;
    }
    return ++questionsInSecond_ <= kMostQuestionsPerSecond;
}

std::optional<BootTime> RefusalTracker::nextLook() const {
    std::optional<BootTime> next;
    for (const Process& process : processes_) {
        if (process.nextLook && (!next || *process.nextLook < *next))
            next = process.nextLook;
    }
    return next;
}

std::vector<Verdict> RefusalTracker::look(BootTime now) {
    std::vector<Verdict> verdicts;
    for (Process& process : processes_) {
        if (process.nextLook && *process.nextLook <= now) {
            process.nextLook.reset();
            decide(process, now, verdicts);
        }
    }
    std::erase_if(processes_, [now](const Process& process) {
        return !process.nextLook &&
               now - process.lastAt > (process.endedAt ? kLoopPause : kLongestMemory);
    });
    return verdicts;
}

// Whether it ended as one does that wanted this port and no other, although it took others in
// between.
bool RefusalTracker::gaveUp(const Process& process, const Refused& refused) {
    if (!process.endedAt || !process.hasFailed)
        return false;
    if (process.taken.empty())
        return false;
    const Taken& last = *std::ranges::max_element(process.taken, {}, &Taken::at);
    const bool cameBack =
        refused.lastAt > last.at && *process.endedAt - refused.lastAt <= kPartOfEnd;
    const bool lookedOnly = last.at >= refused.at && last.letGoAt &&
                            isNear(refused.port, last.port) &&
                            *process.endedAt - *last.letGoAt <= kAtOnce;
    return cameBack || lookedOnly;
}

void RefusalTracker::decide(Process& process, BootTime now, std::vector<Verdict>& verdicts) {
    const auto isKept = [&process](const Taken& taken) {
        return taken.listensSince && !taken.letGoAt &&
               (!process.endedAt || taken.by != process.pid);
    };
    const bool tookAnother = std::ranges::any_of(process.taken, isKept);
    for (Refused& refused : process.refused) {
        const bool wasTried =
            refused.state == Refused::State::tried && now - refused.at <= kLaterUse;
        const bool hasGivenUp = gaveUp(process, refused);
        if (refused.state != Refused::State::open && !(wasTried && (tookAnother || hasGivenUp)))
            continue;
        const auto isTry = [&](const Taken& taken) {
            if (taken.at < refused.at || isKept(taken))
                return false;
            if (!taken.listensSince)
                return true;
            if (!taken.letGoAt)
                return false; // ends with the process
            return taken.isKernelChosen || isNear(refused.port, taken.port) ||
                   *taken.letGoAt - *taken.listensSince <= kMomentary || !process.endedAt ||
                   *process.endedAt - *taken.letGoAt > kPartOfEnd;
        };
        if (!tookAnother && !hasGivenUp && !refused.isKnownToWant &&
            std::ranges::any_of(process.taken, isTry)) {
            refused.state = Refused::State::tried;
            continue;
        }
        refused.state = Refused::State::told;
        if (!announce(process, refused))
            continue;
        Verdict verdict;
        verdict.kind = tookAnother       ? Verdict::Kind::drift
                       : process.endedAt ? Verdict::Kind::failedStart
                                         : Verdict::Kind::goesOn;
        verdict.port = refused.port;
        verdict.holder = refused.holder;
        verdict.attempt = process.pid;
        verdicts.push_back(std::move(verdict));
    }
}

bool RefusalTracker::announce(const Process& process, const Refused& refused) {
    const BootTime at = refused.at;
    std::erase_if(announcements_, [at](const Announcement& earlier) {
        return at - earlier.announcedAt >= kLoopPause;
    });
    for (Announcement& earlier : announcements_) {
        if (earlier.port != refused.port || earlier.network != process.network ||
            earlier.holder != refused.holder.pid)
            continue;
        const BootTime pause = at - earlier.lastAt;
        const bool isSibling = earlier.parent == process.parent;
        const bool isFamily =
            isSibling || earlier.pid == process.parent || earlier.parent == process.pid;
        // Of one that was gone too soon the name is all that is known.
        const bool isSameCommand = earlier.command == process.command &&
                                   (earlier.commandKey == 0 || process.commandKey == 0 ||
                                    earlier.commandKey == process.commandKey);
        const bool isLoop =
            isSameCommand && (pause < kFasterThanPeople ||
                              (isSibling && !holders_.isShellOfTerminal(process.parent)));
        if (isLoop || (isFamily && pause < kSameAttempt)) {
            earlier.lastAt = at;
            return false;
        }
    }
    if (announcements_.size() >= kMostAnnouncements)
        announcements_.erase(announcements_.begin());
    announcements_.push_back({process.command, process.commandKey, process.pid, process.parent,
                              process.network, refused.port, refused.holder.pid, at, at});
    return true;
}

bool RefusalTracker::knows(std::uint16_t port, BootTime now, std::optional<ProcessId> who) const {
    return std::ranges::any_of(processes_, [port, now, who](const Process& process) {
        return (!who || process.pid == *who || process.parent == *who) &&
               std::ranges::any_of(process.refused, [port, now](const Refused& refused) {
                   return refused.port == port && now - refused.lastAt < kLoopPause;
               });
    });
}

} // namespace zenlot
