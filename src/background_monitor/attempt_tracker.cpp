#include "background_monitor/attempt_tracker.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

namespace zenlot {
namespace {

constexpr std::size_t kMostAttempts = 512;
constexpr std::size_t kMostDeadSockets = 64;
constexpr std::size_t kMostUsedPorts = 256;
constexpr std::size_t kMostAnnouncements = 64;

// A server that can't bind ends soon after, once it has said so and put its house in order.
constexpr BootTime kLongestFarewell{1500};
// Events of sockets and of processes take ways of their own.
constexpr BootTime kEventDelay{120};
constexpr BootTime kFirstLookAfterEnd{15};
// What runtimes probe at their start takes far less.
constexpr BootTime kLongestProbe{5};
// A server listens by then, or never will.
constexpr BootTime kSettled{3000};
constexpr BootTime kLongestSearch{5000};
constexpr BootTime kUnseenEndGrace{200};
constexpr std::array<BootTime, 9> kLooksAfterEvidence{
    BootTime(100),  BootTime(200),  BootTime(350),  BootTime(550), BootTime(750),
    BootTime(1100), BootTime(1500), BootTime(2000), BootTime(3000)};
// After this long a tool that still listens nowhere has not simply taken the next port.
constexpr BootTime kGoesOnAfter{300};
// Restarts that follow faster than people do are a loop.
constexpr BootTime kFasterThanPeople{3000};
// Several processes of one attempt may fail one after the other.
constexpr BootTime kSameAttempt{2000};
constexpr BootTime kLookForConnecting{500};
constexpr int kNextPorts = 10;
// Looks that are in no hurry are taken together.
constexpr BootTime kTogether{250};

BootTime notBefore(BootTime time) {
    return (time + kTogether - BootTime(1)) / kTogether * kTogether;
}

bool contains(const auto& range, const auto& value) {
    return std::ranges::find(range, value) != std::ranges::end(range);
}

bool overlapsAny(const std::vector<IpAddress>& wanted, const ListeningSocket& holder) {
    return wanted.empty() || std::ranges::any_of(wanted, [&holder](const IpAddress& address) {
               return overlaps(address, holder);
           });
}

std::vector<std::uint16_t> portsOf(const std::vector<ListeningSocket>& sockets) {
    std::vector<std::uint16_t> ports;
    ports.reserve(sockets.size());
    for (const ListeningSocket& socket : sockets)
        ports.push_back(socket.port);
    std::ranges::sort(ports);
    ports.erase(std::unique(ports.begin(), ports.end()), ports.end());
    return ports;
}

bool isIpv4(const ListeningSocket& socket) {
    return socket.address.family == AddressFamily::ipv4;
}

// Whether listening there says that the wanted port could not be had.
bool isDrift(const Attempt& attempt, std::uint16_t wanted,
             const std::vector<ListeningSocket>& own) {
    if (attempt.runtime->drifts || attempt.wanted.isExplicit())
        return !own.empty();
    return std::ranges::any_of(own, [wanted](const ListeningSocket& socket) {
        return socket.port > wanted && socket.port <= wanted + kNextPorts;
    });
}

} // namespace

AttemptTracker::AttemptTracker(DeadSockets deadSockets, Ends ends)
    : deadSocketsSeen_(deadSockets), ends_(ends) {}

void AttemptTracker::processStarted(Attempt attempt, BootTime now) {
    const auto isKnown = [&attempt](const Tracked& tracked) {
        return tracked.attempt.pid == attempt.pid &&
               tracked.attempt.processStartedAt == attempt.processStartedAt &&
               tracked.attempt.commandKey == attempt.commandKey;
    };
    if (std::ranges::any_of(attempts_, isKnown))
        return;
    // A process that runs another program is another attempt.
    std::erase_if(attempts_, [&attempt](const Tracked& tracked) {
        return tracked.attempt.pid == attempt.pid;
    });
    for (Tracked& tracked : attempts_) {
        const Attempt& other = tracked.attempt;
        const bool isSameCommand =
            other.runtime == attempt.runtime &&
            (!attempt.runtime->mayNamePortItself || other.commandKey == attempt.commandKey);
        if (isSameCommand && !tracked.endedAt && contains(attempt.ancestors, other.pid)) {
            if (!contains(tracked.members, attempt.pid))
                tracked.members.push_back(attempt.pid);
            return;
        }
    }
    if (attempts_.size() >= kMostAttempts)
        attempts_.erase(attempts_.begin());
    Tracked tracked;
    tracked.attempt = std::move(attempt);
    tracked.nextLook = tracked.attempt.runtime->probesByConnecting ? now + kLookForConnecting
                                                                   : notBefore(now + kSettled);
    // A process that was found only now may have failed already.
    for (const DeadSocket& dead : deadSockets_) {
        if (dead.at >= tracked.attempt.startedAt && tracked.evidenceAt == BootTime(0)) {
            tracked.evidenceAt = dead.at;
            tracked.nextLook = now + kFirstLookAfterEnd;
        }
    }
    attempts_.push_back(std::move(tracked));
}

void AttemptTracker::processEnded(ProcessId pid, ProcessEnd end, BootTime now) {
    for (auto tracked = attempts_.begin(); tracked != attempts_.end(); ++tracked) {
        const bool isItself = tracked->attempt.pid == pid;
        if (!isItself && !contains(tracked->members, pid))
            continue;
        if (end == ProcessEnd::stopped) {
            if (isItself)
                attempts_.erase(tracked);
        } else if (!tracked->endedAt) {
            tracked->endedAt = now;
            tracked->nextLook = now + kFirstLookAfterEnd;
        }
        return;
    }
}

void AttemptTracker::socketDied(UnusedSocket socket, BootTime now) {
    if (socket.kind == UnusedSocket::Kind::bound)
        return;
    if (socket.kind == UnusedSocket::Kind::addressProbe) {
        // The probe begins with a socket that is not even bound.
        const auto probe =
            std::find_if(deadSockets_.rbegin(), deadSockets_.rend(), [now](const DeadSocket& dead) {
                return dead.family == AddressFamily::ipv4 && now - dead.at <= kLongestProbe;
            });
        if (probe != deadSockets_.rend())
            deadSockets_.erase(std::next(probe).base());
        else
            lastProbeAt_ = now;
        return;
    }
    if (socket.family == AddressFamily::ipv4 && now - lastProbeAt_ <= kLongestProbe) {
        lastProbeAt_ = BootTime(-1'000'000);
        return;
    }
    if (deadSockets_.size() >= kMostDeadSockets)
        deadSockets_.pop_front();
    deadSockets_.push_back({now, socket.family});
    for (Tracked& tracked : attempts_) {
        // Tools that try again and again are not to be waited for again and again.
        if (tracked.evidenceAt == BootTime(0) || now - tracked.evidenceAt > kLongestSearch) {
            tracked.evidenceAt = now;
            tracked.looksSinceEvidence = 0;
        }
        const BootTime wait = tracked.endedAt ? kFirstLookAfterEnd : kLooksAfterEvidence.front();
        tracked.nextLook = std::min(tracked.nextLook, now + wait);
    }
}

std::optional<BootTime> AttemptTracker::nextLook() const {
    const auto next = std::ranges::min_element(attempts_, {}, &Tracked::nextLook);
    return next == attempts_.end() ? std::nullopt : std::optional(next->nextLook);
}

std::vector<Verdict> AttemptTracker::look(const Machine& machine, BootTime now) {
    while (!deadSockets_.empty() && now - deadSockets_.front().at > kLongestSearch)
        deadSockets_.pop_front();
    std::vector<Verdict> verdicts;
    std::erase_if(attempts_, [&](Tracked& tracked) {
        return tracked.nextLook <= now && lookAt(tracked, machine, now, verdicts) == Outcome::done;
    });
    return verdicts;
}

AttemptTracker::Outcome AttemptTracker::lookAt(Tracked& tracked, const Machine& machine,
                                               BootTime now, std::vector<Verdict>& verdicts) {
    if (tracked.endedAt)
        return lookAtEnded(tracked, machine, now, verdicts);
    if (machine.isRunning(tracked.attempt))
        return lookAtRunning(tracked, machine, now, verdicts);
    if (ends_ == Ends::unseen) {
        tracked.endedAt = now;
        return lookAtEnded(tracked, machine, now, verdicts);
    }
    // Word of its failure may still be on its way; without one it ended well.
    if (!tracked.vanishedAt)
        tracked.vanishedAt = now;
    tracked.nextLook = notBefore(now + kUnseenEndGrace);
    return now - *tracked.vanishedAt >= kUnseenEndGrace ? Outcome::done : Outcome::keepLooking;
}

AttemptTracker::Outcome AttemptTracker::lookAtEnded(Tracked& tracked, const Machine& machine,
                                                    BootTime now, std::vector<Verdict>& verdicts) {
    const Attempt& attempt = tracked.attempt;
    const auto evidence = evidenceFor(tracked, now);
    const bool isUnseen = deadSocketsSeen_ == DeadSockets::unseen;
    if (isUnseen && ends_ == Ends::unseen)
        return Outcome::done;
    if (evidence == deadSockets_.end() && !isUnseen) {
        tracked.nextLook = *tracked.endedAt + kEventDelay;
        return now >= tracked.nextLook ? Outcome::done : Outcome::keepLooking;
    }
    if (*tracked.endedAt - attempt.startedAt > kFirstSeconds)
        return Outcome::done;
    const std::vector<ListeningSocket> listening = machine.listeningSockets();
    const std::vector<std::uint16_t> wanted = wantedPorts(attempt, machine, listening);
    if (auto verdict = judge(attempt, Verdict::Kind::failedStart, machine, listening, wanted)) {
        if (!isUnseen)
            deadSockets_.erase(evidence);
        if (announce(attempt, *verdict, now))
            verdicts.push_back(*std::move(verdict));
    }
    return Outcome::done;
}

AttemptTracker::Outcome AttemptTracker::lookAtRunning(Tracked& tracked, const Machine& machine,
                                                      BootTime now,
                                                      std::vector<Verdict>& verdicts) {
    const Attempt& attempt = tracked.attempt;
    const std::vector<std::uint64_t> inodes = machine.socketsOfTree(attempt.pid);
    std::vector<ListeningSocket> foreign = machine.listeningSockets();
    const auto firstOwn = std::stable_partition(
        foreign.begin(), foreign.end(),
        [&inodes](const ListeningSocket& socket) { return !contains(inodes, socket.inode); });
    const std::vector<ListeningSocket> own(firstOwn, foreign.end());
    foreign.erase(firstOwn, foreign.end());

    const bool isSettled = now - attempt.startedAt >= kSettled;
    const auto evidence = evidenceFor(tracked, now);
    const bool mayJudge = evidence != deadSockets_.end() || attempt.runtime->probesByConnecting ||
                          (deadSocketsSeen_ == DeadSockets::unseen && attempt.runtime->drifts);
    if (mayJudge) {
        const std::vector<std::uint16_t> wanted = wantedPorts(attempt, machine, foreign);
        const auto isWanted = [&wanted](const ListeningSocket& socket) {
            return contains(wanted, socket.port);
        };
        if (std::ranges::any_of(own, isWanted)) {
            // Some servers ask for the port twice, and go on with the half that they got.
            const bool isHalf = evidence != deadSockets_.end() &&
                                evidence->family == AddressFamily::ipv4 &&
                                std::ranges::none_of(own, isIpv4);
            std::erase_if(foreign, std::not_fn(isIpv4));
            auto verdict = isHalf ? judge(attempt, Verdict::Kind::drift, machine, foreign, wanted)
                                  : std::nullopt;
            if (verdict) {
                deadSockets_.erase(evidence);
                if (announce(attempt, *verdict, now))
                    verdicts.push_back(*std::move(verdict));
            }
            remember(attempt, own);
            return Outcome::done;
        }
        const bool goesOn = own.empty() && attempt.runtime->goesOnWithoutPort &&
                            evidence != deadSockets_.end() &&
                            now - tracked.evidenceAt >= kGoesOnAfter;
        std::optional<Verdict> verdict;
        if (goesOn || !own.empty())
            verdict = judge(attempt, goesOn ? Verdict::Kind::goesOn : Verdict::Kind::drift, machine,
                            foreign, wanted);
        if (verdict && (goesOn || isDrift(attempt, verdict->port, own))) {
            if (evidence != deadSockets_.end())
                deadSockets_.erase(evidence);
            if (announce(attempt, *verdict, now))
                verdicts.push_back(*std::move(verdict));
            return Outcome::done;
        }
    }

    if (!own.empty() && isSettled) {
        remember(attempt, own);
        return Outcome::done;
    }
    if (now - attempt.startedAt > kFirstSeconds)
        return Outcome::done;
    const bool hasLooksLeft = tracked.evidenceAt != BootTime(0) &&
                              tracked.looksSinceEvidence + 1 < kLooksAfterEvidence.size();
    tracked.nextLook = now + kSettled;
    if (hasLooksLeft) {
        const BootTime next =
            tracked.evidenceAt + kLooksAfterEvidence[++tracked.looksSinceEvidence];
        tracked.nextLook = std::max(next, now + kLooksAfterEvidence.front());
    } else if (attempt.runtime->probesByConnecting && !isSettled) {
        tracked.nextLook = now + kLookForConnecting;
    }
    return Outcome::keepLooking;
}

std::vector<std::uint16_t>
AttemptTracker::wantedPorts(const Attempt& attempt, const Machine& machine,
                            const std::vector<ListeningSocket>& listening) const {
    if (attempt.wanted.isExplicit())
        return {attempt.wanted.port};
    std::vector<std::uint16_t> ports;
    if (attempt.runtime->mayNamePortItself || !attempt.runtime->configs.empty() ||
        !attempt.config.empty())
        ports = machine.writtenPorts(attempt, portsOf(listening));
    // What is written now counts for more than what was so once.
    if (const auto used = usedPorts_.find(attempt.commandKey); used != usedPorts_.end())
        ports.push_back(used->second);
    if (!ports.empty())
        return ports;
    if (attempt.wanted.source == WantedPort::Source::usual)
        return {attempt.wanted.port};
    return {};
}

std::optional<Verdict> AttemptTracker::judge(const Attempt& attempt, Verdict::Kind kind,
                                             const Machine& machine,
                                             const std::vector<ListeningSocket>& foreign,
                                             const std::vector<std::uint16_t>& wanted) const {
    for (const std::uint16_t port : wanted) {
        for (const ListeningSocket& socket : foreign) {
            if (socket.port != port || !overlapsAny(attempt.wanted.addresses, socket))
                continue;
            std::optional<PortHolder> holder = machine.holderOf(socket);
            if (!holder || holder->startedAt > attempt.startedAt || holder->pid == attempt.pid ||
                contains(attempt.ancestors, holder->pid) ||
                contains(holder->ancestors, attempt.pid))
                continue;
            return Verdict{kind, port, *std::move(holder), attempt.pid};
        }
    }
    return std::nullopt;
}

bool AttemptTracker::announce(const Attempt& attempt, const Verdict& verdict, BootTime now) {
    std::erase_if(announcements_, [now](const Announcement& announcement) {
        return now - announcement.announcedAt >= kLoopPause;
    });
    for (Announcement& earlier : announcements_) {
        if (earlier.port != verdict.port)
            continue;
        const bool isSameAttempt =
            earlier.holder == verdict.holder.pid && now - earlier.lastFailedAt < kSameAttempt;
        const bool isSameCommand = earlier.commandKey == attempt.commandKey;
        const bool isLoop =
            earlier.origin == attempt.origin || now - earlier.lastFailedAt < kFasterThanPeople;
        if (isSameAttempt || (isSameCommand && isLoop)) {
            earlier.lastFailedAt = now;
            return false;
        }
    }
    if (announcements_.size() >= kMostAnnouncements)
        announcements_.erase(announcements_.begin());
    announcements_.push_back(
        {attempt.commandKey, attempt.origin, verdict.port, verdict.holder.pid, now, now});
    return true;
}

std::deque<AttemptTracker::DeadSocket>::iterator AttemptTracker::evidenceFor(const Tracked& tracked,
                                                                             BootTime now) {
    const BootTime latest = tracked.endedAt ? *tracked.endedAt + kEventDelay : now;
    const BootTime earliest =
        std::max(tracked.attempt.startedAt,
                 tracked.endedAt ? *tracked.endedAt - kLongestFarewell : now - kLongestSearch);
    // The last one is the likeliest to be its own.
    for (auto dead = deadSockets_.end(); dead != deadSockets_.begin();) {
        --dead;
        if (dead->at < earliest || dead->at > latest)
            continue;
        const auto next = std::next(dead);
        const bool isProbe = tracked.attempt.runtime->probesProtocols &&
                             (dead->family == AddressFamily::ipv4 ||
                              (next != deadSockets_.end() && next->family == AddressFamily::ipv4 &&
                               next->at - dead->at <= kLongestProbe));
        if (!isProbe)
            return dead;
    }
    return deadSockets_.end();
}

void AttemptTracker::remember(const Attempt& attempt, std::span<const ListeningSocket> own) {
    if (own.empty() || attempt.wanted.isExplicit() || !attempt.runtime->mayNamePortItself)
        return;
    if (usedPorts_.size() >= kMostUsedPorts)
        usedPorts_.erase(usedPorts_.begin());
    usedPorts_[attempt.commandKey] =
        std::ranges::min_element(own, {}, &ListeningSocket::port)->port;
}

} // namespace zenlot
