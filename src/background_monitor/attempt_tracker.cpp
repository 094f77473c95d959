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
constexpr std::size_t kMostPortsOfCommand = 4;
constexpr std::size_t kMostSuspects = 512;
constexpr std::size_t kMostAnnouncements = 64;

// A server that can't bind ends soon after, once it has said so and put its house in order: within
// a quarter of a second on a busy machine. Where nobody else can have left the dead socket it may
// take longer.
constexpr BootTime kFarewell{400};
constexpr BootTime kLongestFarewell{1500};
// So long a socket may live whose connection found no route.
constexpr BootTime kLongestFailedConnection{1000};
// Events of sockets and of processes take ways of their own.
constexpr BootTime kEventDelay{120};
constexpr BootTime kFirstLookAfterEnd{15};
// What runtimes probe at their start takes far less.
constexpr BootTime kLongestProbe{5};
// The Java machine has threads of its own that may come in between.
constexpr BootTime kLongestProbeOfJava{25};
// And so long after its question a socket dies that waited for an answer.
constexpr BootTime kAfterNameQuestion{60};
// A server listens by then, or never will.
constexpr BootTime kSettled{3000};
constexpr BootTime kLongestSearch{5000};
constexpr BootTime kUnseenEndGrace{200};
constexpr std::array<BootTime, 9> kLooksAfterEvidence{
    BootTime(100),  BootTime(200),  BootTime(350),  BootTime(550), BootTime(750),
    BootTime(1100), BootTime(1500), BootTime(2000), BootTime(3000)};
// After this long a tool that still listens nowhere has not simply taken the next port.
constexpr BootTime kGoesOnAfter{300};
// After this long one whose port was named is not just slow.
constexpr BootTime kStaysWithoutPort{1500};
// And one that may be a client, or whose port only a file mentions.
constexpr BootTime kLessSurelyStaysWithoutPort{2000};
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
bool isDrift(const Attempt& attempt, const PortAnswer& answer, std::uint16_t wanted,
             const std::vector<ListeningSocket>& own) {
    // Of one whose own package tells the port, nobody knows how it chooses another.
    if (attempt.runtime->drifts || isExplicit(answer.source) || answer.source == PortSource::manual)
        return !own.empty();
    return std::ranges::any_of(own, [wanted](const ListeningSocket& socket) {
        return socket.port > wanted && socket.port <= wanted + kNextPorts;
    });
}

// Whether only its command line tells that it may be a server.
bool isUnknown(const Attempt& attempt) {
    return contains(attempt.runtime->programs, kAnyProgram);
}

// Whether the answer is too weak where it is not certain that the attempt was refused anything.
bool isWeak(const Attempt& attempt, const PortAnswer& answer) {
    return answer.source == PortSource::project || answer.source > PortSource::habit ||
           (isUnknown(attempt) && !isExplicit(answer.source));
}

} // namespace

// The machine during one round of looks, which asks it for its listening sockets once.
class AttemptTracker::Present {
  public:
    explicit Present(const Machine& asked) : machine(asked) {}

    const Machine& machine;

    const std::vector<ListeningSocket>& listening() const {
        if (!listening_)
            listening_ = machine.listeningSockets();
        return *listening_;
    }

  private:
    mutable std::optional<std::vector<ListeningSocket>> listening_;
};

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
    if (socket.kind == UnusedSocket::Kind::failedConnection) {
        // One over IPv4 through an IPv6 socket is counted with the others, and needs no taking
        // back.
        foundFailedConnections_ += socket.family == AddressFamily::ipv4 ? 1 : 0;
        return;
    }
    if (socket.kind == UnusedSocket::Kind::nameQuestion) {
        lastNameQuestionAt_ = now;
        return;
    }
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
    // Noted at once, whatever becomes of this one.
    for (auto dead = deadSockets_.rbegin();
         dead != deadSockets_.rend() && now - dead->at <= kLongestProbeOfJava; ++dead)
        dead->isFollowedByIpv4 |= socket.family == AddressFamily::ipv4;
    if (socket.family == AddressFamily::ipv4 && now - lastProbeAt_ <= kLongestProbe) {
        lastProbeAt_ = BootTime(-1'000'000);
        return;
    }
    while (!failedConnections_.empty() &&
           now - failedConnections_.front() > kLongestFailedConnection)
        failedConnections_.pop_front();
    if (socket.family == AddressFamily::ipv4 && !failedConnections_.empty()) {
        failedConnections_.pop_front();
        return;
    }
    if (deadSockets_.size() >= kMostDeadSockets)
        deadSockets_.pop_front();
    deadSockets_.push_back(
        {now, socket.family, now - lastNameQuestionAt_ <= kAfterNameQuestion, false});
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

void AttemptTracker::connectionsFailed(std::uint64_t count, BootTime now) {
    count -= std::min(count, std::exchange(foundFailedConnections_, 0));
    for (count = std::min<std::uint64_t>(count, kMostDeadSockets); count > 0; --count) {
        const auto dead =
            std::find_if(deadSockets_.rbegin(), deadSockets_.rend(), [now](const DeadSocket& each) {
                return each.family == AddressFamily::ipv4 && now - each.at <= kEventDelay;
            });
        if (dead != deadSockets_.rend())
            deadSockets_.erase(std::next(dead).base());
        else if (failedConnections_.size() < kMostDeadSockets)
            failedConnections_.push_back(now);
    }
}

std::optional<BootTime> AttemptTracker::nextLook() const {
    const auto next = std::ranges::min_element(attempts_, {}, &Tracked::nextLook);
    return next == attempts_.end() ? std::nullopt : std::optional(next->nextLook);
}

std::vector<Verdict> AttemptTracker::look(const Machine& machine, BootTime now) {
    while (!deadSockets_.empty() && now - deadSockets_.front().at > kLongestSearch)
        deadSockets_.pop_front();
    while (!suspects_.empty() && now - suspects_.front().endedAt > kLongestSearch)
        suspects_.pop_front();
    const Present present(machine);
    std::vector<Verdict> verdicts;
    std::erase_if(attempts_, [&](Tracked& tracked) {
        if (tracked.nextLook > now || lookAt(tracked, present, now, verdicts) != Outcome::done)
            return false;
        suspect(tracked);
        return true;
    });
    return verdicts;
}

AttemptTracker::Outcome AttemptTracker::lookAt(Tracked& tracked, const Present& present,
                                               BootTime now, std::vector<Verdict>& verdicts) {
    if (tracked.endedAt)
        return lookAtEnded(tracked, present, now, verdicts);
    if (present.machine.isRunning(tracked.attempt))
        return lookAtRunning(tracked, present, now, verdicts);
    return lookAtVanished(tracked, present, now, verdicts);
}

AttemptTracker::Outcome AttemptTracker::lookAtVanished(Tracked& tracked, const Present& present,
                                                       BootTime now,
                                                       std::vector<Verdict>& verdicts) {
    if (ends_ == Ends::unseen) {
        tracked.endedAt = now;
        return lookAtEnded(tracked, present, now, verdicts);
    }
    // Word of its failure, or of the signal that ended it, may still be on its way.
    if (!tracked.vanishedAt)
        tracked.vanishedAt = now;
    if (now - *tracked.vanishedAt < kUnseenEndGrace) {
        tracked.nextLook = notBefore(now + kUnseenEndGrace);
        return Outcome::keepLooking;
    }
    // It said that all was well. Some servers say so when they were refused.
    tracked.endedAt = tracked.vanishedAt;
    tracked.hasEndedQuietly = true;
    return lookAtEnded(tracked, present, now, verdicts);
}

AttemptTracker::Outcome AttemptTracker::lookAtEnded(Tracked& tracked, const Present& present,
                                                    BootTime now, std::vector<Verdict>& verdicts) {
    const Attempt& attempt = tracked.attempt;
    const Evidence evidence = evidenceFor(tracked, present, now);
    // Whoever waits for debuggers does so before any code runs that probes.
    const Evidence any =
        attempt.debugger ? evidenceFor(tracked, present, now, Probes::counted) : evidence;
    if (attempt.debugger && any != deadSockets_.end()) {
        if (auto verdict = judgeDebugger(attempt, Verdict::Kind::failedStart, present,
                                         present.listening(), any->at)) {
            conclude(tracked, any, *std::move(verdict), now, verdicts);
            return Outcome::done;
        }
    }
    const bool isUnseen = deadSocketsSeen_ == DeadSockets::unseen;
    if (isUnseen && (ends_ == Ends::unseen || tracked.hasEndedQuietly))
        return Outcome::done;
    if (evidence == deadSockets_.end() && !isUnseen) {
        tracked.nextLook = *tracked.endedAt + kEventDelay;
        return now >= tracked.nextLook ? Outcome::done : Outcome::keepLooking;
    }
    const auto answer = answerFor(attempt, present);
    const BootTime evidenceAt = isUnseen ? *tracked.endedAt : evidence->at;
    if (!answer ||
        (isWeak(attempt, *answer) &&
         (isUnseen || (tracked.hasEndedQuietly && answer->source > PortSource::project) ||
          mayBeOthers(tracked, present, evidenceAt))))
        return Outcome::done;
    if (auto verdict = judge(attempt, Verdict::Kind::failedStart, present, present.listening(),
                             *answer, evidenceAt))
        conclude(tracked, evidence, *std::move(verdict), now, verdicts);
    return Outcome::done;
}

AttemptTracker::Outcome AttemptTracker::lookAtRunning(Tracked& tracked, const Present& present,
                                                      BootTime now,
                                                      std::vector<Verdict>& verdicts) {
    const Attempt& attempt = tracked.attempt;
    const std::vector<std::uint64_t> inodes = present.machine.socketsOfTree(attempt.pid);
    std::vector<ListeningSocket> foreign = present.listening();
    const auto firstOwn = std::stable_partition(
        foreign.begin(), foreign.end(),
        [&inodes](const ListeningSocket& socket) { return !contains(inodes, socket.inode); });
    const std::vector<ListeningSocket> own(firstOwn, foreign.end());
    foreign.erase(firstOwn, foreign.end());

    const bool isSettled = now - attempt.startedAt >= kSettled;
    const Evidence evidence = evidenceFor(tracked, present, now);
    const bool hasEvidence = evidence != deadSockets_.end();
    if (hasEvidence && attempt.debugger) {
        auto verdict =
            judgeDebugger(attempt, Verdict::Kind::goesOn, present, foreign, evidence->at);
        // One that can't have its own port either ends or says so first.
        if (verdict && now - tracked.evidenceAt < kStaysWithoutPort) {
            planNextLook(tracked, now);
            return Outcome::keepLooking;
        }
        if (verdict) {
            conclude(tracked, evidence, *std::move(verdict), now, verdicts);
            return Outcome::done;
        }
    }
    // Some never close the socket that was refused.
    const bool keepsSocket =
        !hasEvidence && isSettled && own.empty() && present.machine.keepsUnusedSocket(attempt.pid);
    const bool mayJudge = hasEvidence || keepsSocket || attempt.runtime->probesByConnecting ||
                          (deadSocketsSeen_ == DeadSockets::unseen && attempt.runtime->drifts);
    // One that asks or tries again may have further ports.
    const bool mayGoOn = keepsSocket || ((own.empty() || attempt.runtime->goesOnWithoutPort) &&
                                         hasEvidence && now - tracked.evidenceAt >= kGoesOnAfter);
    const auto answer =
        mayJudge && (!own.empty() || mayGoOn) ? answerFor(attempt, present) : std::nullopt;
    if (answer) {
        const BootTime evidenceAt = hasEvidence   ? evidence->at
                                    : keepsSocket ? attempt.startedAt
                                                  : now;
        const auto isWanted = [&answer](const ListeningSocket& socket) {
            return contains(answer->ports, socket.port);
        };
        std::optional<Verdict> verdict;
        if (std::ranges::any_of(own, isWanted)) {
            // Some servers ask for the port twice, and go on with the half that they got.
            const bool isHalf = hasEvidence && evidence->family == AddressFamily::ipv4 &&
                                std::ranges::none_of(own, isIpv4);
            std::erase_if(foreign, std::not_fn(isIpv4));
            if (isHalf)
                verdict =
                    judge(attempt, Verdict::Kind::drift, present, foreign, *answer, evidenceAt);
            if (verdict)
                conclude(tracked, evidence, *std::move(verdict), now, verdicts);
            remember(attempt, own);
            return Outcome::done;
        }
        // What is known to ask or to try again is believed sooner than what may only be slow.
        const BootTime sinceEvidence = now - tracked.evidenceAt;
        const bool isNamed = isExplicit(answer->source) && !isUnknown(attempt);
        const bool staysWithout = keepsSocket ? answer->source <= PortSource::project
                                  : isNamed   ? sinceEvidence >= kStaysWithoutPort
                                              : answer->source != PortSource::habit &&
                                                  sinceEvidence >= kLessSurelyStaysWithoutPort &&
                                                  !mayBeOthers(tracked, present, evidenceAt);
        const bool goesOn = mayGoOn && (attempt.runtime->goesOnWithoutPort || staysWithout);
        // What it keeps itself is nobody else's.
        const bool isTooWeak =
            isWeak(attempt, *answer) &&
            (keepsSocket ? isUnknown(attempt)
                         : !hasEvidence || mayBeOthers(tracked, present, evidenceAt));
        if ((goesOn || !own.empty()) && !isTooWeak)
            verdict = judge(attempt, goesOn ? Verdict::Kind::goesOn : Verdict::Kind::drift, present,
                            foreign, *answer, evidenceAt);
        if (verdict && (goesOn || isDrift(attempt, *answer, verdict->port, own))) {
            conclude(tracked, evidence, *std::move(verdict), now, verdicts);
            return Outcome::done;
        }
    }

    if (!own.empty() && isSettled) {
        if (!hasEvidence)
            remember(attempt, own);
        return Outcome::done;
    }
    if (now - attempt.startedAt > (isUnknown(attempt) ? kLongestStartOfUnknown : kLongestStart))
        return Outcome::done;
    planNextLook(tracked, now);
    return Outcome::keepLooking;
}

void AttemptTracker::planNextLook(Tracked& tracked, BootTime now) const {
    const BootTime age = now - tracked.attempt.startedAt;
    tracked.nextLook = notBefore(now + std::max(kSettled, age / 4));
    const bool hasLooksLeft = tracked.evidenceAt != BootTime(0) &&
                              tracked.looksSinceEvidence + 1 < kLooksAfterEvidence.size();
    if (hasLooksLeft) {
        const BootTime next =
            tracked.evidenceAt + kLooksAfterEvidence[++tracked.looksSinceEvidence];
        tracked.nextLook = std::max(next, now + kLooksAfterEvidence.front());
    } else if (tracked.attempt.runtime->probesByConnecting && age < kSettled) {
        tracked.nextLook = now + kLookForConnecting;
    }
}

std::optional<PortAnswer> AttemptTracker::answerFor(const Attempt& attempt,
                                                    const Present& present) const {
    std::vector<PortAnswer> answers;
    const WantedPort& wanted = attempt.wanted;
    if (wanted.source == WantedPort::Source::argument)
        return PortAnswer{PortSource::argument, {wanted.port}};
    if (wanted.source == WantedPort::Source::environment)
        return PortAnswer{PortSource::environment, {wanted.port}};
    answers = present.machine.writtenPorts(attempt, portsOf(present.listening()));
    if (const auto used = usedPorts_.find(attempt.commandKey); used != usedPorts_.end())
        answers.push_back({PortSource::lastUse, used->second});
    if (wanted.source == WantedPort::Source::usual)
        answers.push_back({PortSource::habit, {wanted.port}});
    return decidingAnswer(answers);
}

// Of all the ports that the answer names exactly one has to be held, or nothing is said.
std::optional<Verdict> AttemptTracker::judge(const Attempt& attempt, Verdict::Kind kind,
                                             const Present& present,
                                             const std::vector<ListeningSocket>& foreign,
                                             const PortAnswer& answer, BootTime evidenceAt) const {
    const std::vector<IpAddress>& addresses = attempt.wanted.addresses;
    const auto isMissing = [&present](const IpAddress& address) {
        return !present.machine.hasAddress(address);
    };
    if (!addresses.empty() && std::ranges::all_of(addresses, isMissing))
        return std::nullopt;
    std::optional<Verdict> verdict;
    for (const ListeningSocket& socket : foreign) {
        const bool isSecond = verdict && verdict->port == socket.port;
        if (!contains(answer.ports, socket.port) || isSecond || !overlapsAny(addresses, socket) ||
            !present.machine.mayListenOn(socket.port))
            continue;
        std::optional<PortHolder> holder = present.machine.holderOf(socket);
        // One that bound the port first may have been started later.
        if (!holder || holder->startedAt > evidenceAt || holder->pid == attempt.pid ||
            contains(attempt.ancestors, holder->pid) || contains(holder->ancestors, attempt.pid))
            continue;
        if (verdict)
            return std::nullopt;
        verdict = Verdict{kind, socket.port, *std::move(holder), attempt.pid, std::nullopt};
    }
    return verdict;
}

// Where somebody else has had the debugger's port, the attempt was refused it.
std::optional<Verdict> AttemptTracker::judgeDebugger(const Attempt& attempt, Verdict::Kind kind,
                                                     const Present& present,
                                                     const std::vector<ListeningSocket>& foreign,
                                                     BootTime evidenceAt) const {
    Attempt debugged = attempt;
    debugged.wanted = *attempt.debugger;
    // Python's debugger leaves the waiting to a program that it starts.
    return judge(debugged, kind, present, foreign,
                 PortAnswer{PortSource::argument, {debugged.wanted.port}},
                 std::min(evidenceAt, attempt.startedAt));
}

void AttemptTracker::conclude(const Tracked& tracked, const Evidence& evidence, Verdict verdict,
                              BootTime now, std::vector<Verdict>& verdicts) {
    if (evidence != deadSockets_.end()) {
        // That of one which only connects is another's.
        if (!tracked.attempt.runtime->probesByConnecting)
            verdict.socketDiedAt = evidence->at;
        deadSockets_.erase(evidence);
    }
    if (announce(tracked.attempt, verdict, now))
        verdicts.push_back(std::move(verdict));
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

AttemptTracker::Evidence AttemptTracker::evidenceFor(const Tracked& tracked, const Present& present,
                                                     BootTime now, Probes probes) {
    const BootTime latest = tracked.endedAt ? *tracked.endedAt + kEventDelay : now;
    const auto isProbe = [&tracked](const Evidence& dead) {
        return tracked.attempt.runtime->probesProtocols &&
               (dead->family == AddressFamily::ipv4 || dead->followsNameQuestion ||
                dead->isFollowedByIpv4);
    };
    // The last one is the likeliest to be its own.
    for (auto dead = deadSockets_.end(); dead != deadSockets_.begin();) {
        --dead;
        if (dead->at < tracked.attempt.startedAt || dead->at > latest ||
            (probes == Probes::ignored && isProbe(dead)))
            continue;
        if (!tracked.endedAt)
            return now - dead->at <= kLongestSearch ? dead : deadSockets_.end();
        // An end that was only found happened some time before.
        const BootTime farewell = *tracked.endedAt - dead->at;
        const bool isLong = ends_ == Ends::unseen || tracked.attempt.runtime->publishesPorts ||
                            !mayBeOthers(tracked, present, dead->at);
        return farewell <= (isLong ? kLongestFarewell : kFarewell) ? dead : deadSockets_.end();
    }
    return deadSockets_.end();
}

// Whether another process of the user was there that may have left the socket. One that has lived
// for long has its sockets, and so has one that listens. What a server starts is a part of it, but
// for something that only starts others.
bool AttemptTracker::mayBeOthers(const Tracked& tracked, const Present& present,
                                 BootTime diedAt) const {
    const Attempt& attempt = tracked.attempt;
    const auto isOther = [&attempt, diedAt](ProcessId pid, const std::vector<ProcessId>& ancestors,
                                            BootTime startedAt) {
        return pid != attempt.pid && !contains(attempt.ancestors, pid) &&
               (isUnknown(attempt) || !contains(ancestors, attempt.pid)) && startedAt <= diedAt &&
               diedAt - startedAt <= kLongestStartOfUnknown;
    };
    const auto listens = [&present](ProcessId pid) {
        const std::vector<std::uint64_t> inodes = present.machine.socketsOfTree(pid);
        return std::ranges::any_of(present.listening(), [&inodes](const ListeningSocket& socket) {
            return contains(inodes, socket.inode);
        });
    };
    return std::ranges::any_of(suspects_,
                               [&](const Suspect& other) {
                                   return isOther(other.pid, other.ancestors, other.startedAt) &&
                                          diedAt <= other.endedAt + kEventDelay;
                               }) ||
           std::ranges::any_of(attempts_, [&](const Tracked& other) {
               return isOther(other.attempt.pid, other.attempt.ancestors,
                              other.attempt.startedAt) &&
                      (other.endedAt ? diedAt <= *other.endedAt + kEventDelay
                                     : !listens(other.attempt.pid));
           });
}

// What is done with because it listens has its sockets.
void AttemptTracker::suspect(const Tracked& tracked) {
    const auto endedAt = tracked.endedAt ? tracked.endedAt : tracked.vanishedAt;
    if (!endedAt)
        return;
    if (suspects_.size() >= kMostSuspects)
        suspects_.pop_front();
    const Attempt& attempt = tracked.attempt;
    suspects_.push_back({attempt.pid, attempt.ancestors, attempt.startedAt, *endedAt});
}

void AttemptTracker::remember(const Attempt& attempt, std::span<const ListeningSocket> own) {
    if (own.empty() || attempt.wanted.isExplicit() || !attempt.runtime->mayNamePortItself)
        return;
    if (usedPorts_.size() >= kMostUsedPorts && !usedPorts_.contains(attempt.commandKey))
        usedPorts_.erase(usedPorts_.begin());
    std::vector<std::uint16_t> ports = portsOf({own.begin(), own.end()});
    ports.resize(std::min(ports.size(), kMostPortsOfCommand));
    usedPorts_[attempt.commandKey] = std::move(ports);
}

} // namespace zenlot
