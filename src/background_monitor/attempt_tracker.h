// Decides which of the servers that were just started could not have their port, and who holds it.
//
// Pure: it is told of processes and of sockets as they come and go, with the time of each event; it
// says when it wants to look, and looks through a Machine. The evidence is one of
//
//   - failed start: the process ended right after some TCP socket had died without ever getting an
//     address;
//   - drift: after such a death the process, or one that it started, listens on another port;
//   - going on: after such a death, or while it keeps such a socket, it listens nowhere, though its
//     port was named;
//
// and in each case the port that it wants is held by a process that was there before the death and
// that is neither its ancestor nor its descendant. A crash for another reason leaves no dead
// socket, so it is no conflict, even while somebody holds the port. A connection that found no
// route leaves one too; the kernel counts those, and each takes back one dead socket.
//
// Which port it wants is decided by precedence (PortQuestion), and where several held ones remain
// nothing is said. To whom a dead socket belonged is not told: where others might have left it,
// what merely some file of the project mentions does not count.
//
// Each attempt gives one verdict at most. A server that its watcher starts again and again gives
// one a minute.
//
//     tracker.processStarted(std::move(attempt), now);
//     tracker.socketDied({UnusedSocket::Kind::unbound, AddressFamily::ipv6}, now);
//     tracker.processEnded(pid, ProcessEnd::failed, now);
//     for (const Verdict& verdict : tracker.look(machine, *tracker.nextLook())) ...
#pragma once

#include "background_monitor/attempt.h"
#include "background_monitor/port_question.h"
#include "inventory/linux/unused_socket_watch.h"
#include "inventory/listening_socket.h"

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace zenlot {

struct PortHolder {
    ProcessId pid{0}; // 0 when it can't be seen
    BootTime startedAt{0};
    std::vector<ProcessId> ancestors;
    std::string processName;
    std::string displayName;
};

// What the tracker asks about the present.
class Machine {
  public:
    Machine() = default;
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;
    virtual ~Machine() = default;

    virtual std::vector<ListeningSocket> listeningSockets() const = 0;

    // False also for a process that has taken over the id of one that was there.
    virtual bool isRunning(const Attempt& attempt) const = 0;

    // The inodes of the sockets that the process and its descendants hold.
    virtual std::vector<std::uint64_t> socketsOfTree(ProcessId pid) const = 0;

    // Whether the process keeps a TCP socket that is neither bound nor connected, as one does that
    // was refused a port and has not closed what it asked with.
    virtual bool keepsUnusedSocket(ProcessId pid) const = 0;

    // None when nobody holds the socket any more.
    virtual std::optional<PortHolder> holderOf(const ListeningSocket& socket) const = 0;

    // What the attempt's own files say; `held` are the ports to look for where a number alone says
    // nothing.
    virtual std::vector<PortAnswer> writtenPorts(const Attempt& attempt,
                                                 std::span<const std::uint16_t> held) const = 0;

    // Whether the user may listen on the port at all. Without the permission nobody is refused a
    // port because another one has it.
    virtual bool mayListenOn(std::uint16_t port) const = 0;

    // Whether the address is the machine's own, or that of all addresses.
    virtual bool hasAddress(const IpAddress& address) const = 0;
};

enum class ProcessEnd : std::uint8_t {
    failed,  // with a status other than 0, or unseen
    stopped, // by a signal with which people stop a program
};

struct Verdict {
    enum class Kind : std::uint8_t { failedStart, drift, goesOn };

    Kind kind{Kind::failedStart};
    std::uint16_t port{0};
    PortHolder holder;
    ProcessId attempt{0};
    std::optional<BootTime> socketDiedAt{}; // none when it rests on something else
};

class AttemptTracker {
  public:
    // So long a server that has not listened yet may still ask for its port: some build themselves
    // first. Of a program of which nothing is known less is expected.
    static constexpr BootTime kLongestStart{600'000};
    static constexpr BootTime kLongestStartOfUnknown{20'000};
    static constexpr BootTime kLoopPause{60'000};

    // On a machine that does not tell of dead sockets an end with an error is evidence enough, as
    // is another port that a tool took by itself. Where it tells of ends neither, an end says
    // nothing.
    enum class DeadSockets : std::uint8_t { seen, unseen };
    // Where nobody tells how a process ends, an end that is only found counts as one with an error.
    enum class Ends : std::uint8_t { told, unseen };
    explicit AttemptTracker(DeadSockets deadSockets = DeadSockets::seen, Ends ends = Ends::told);

    // A start that was told before counts once.
    void processStarted(Attempt attempt, BootTime now);
    void processEnded(ProcessId pid, ProcessEnd end, BootTime now);
    void socketDied(UnusedSocket socket, BootTime now);
    // So many connections over IPv4 have found no route since the last time.
    void connectionsFailed(std::uint64_t count, BootTime now);

    // When look() should be called next; none while there is nothing to look at.
    std::optional<BootTime> nextLook() const;
    std::vector<Verdict> look(const Machine& machine, BootTime now);

    bool isIdle() const { return attempts_.empty(); }

  private:
    struct Tracked {
        Attempt attempt;
        std::vector<ProcessId> members; // further processes of the same command
        BootTime nextLook{0};
        BootTime evidenceAt{0};
        std::size_t looksSinceEvidence{0};
        std::optional<BootTime> endedAt;
        std::optional<BootTime> vanishedAt;
        bool hasEndedQuietly{false};
    };
    struct DeadSocket {
        BootTime at;
        AddressFamily family;
        bool followsNameQuestion;
        bool isFollowedByIpv4; // at once
    };
    // A process that may have left a dead socket.
    struct Suspect {
        ProcessId pid;
        std::vector<ProcessId> ancestors;
        BootTime startedAt;
        BootTime endedAt;
    };
    class Present;
    using Evidence = std::deque<DeadSocket>::iterator;
    struct Announcement {
        std::size_t commandKey;
        ProcessId origin;
        std::uint16_t port;
        ProcessId holder;
        BootTime announcedAt;
        BootTime lastFailedAt;
    };
    enum class Outcome : std::uint8_t { keepLooking, done };

    Outcome lookAt(Tracked& tracked, const Present& present, BootTime now,
                   std::vector<Verdict>& verdicts);
    Outcome lookAtVanished(Tracked& tracked, const Present& present, BootTime now,
                           std::vector<Verdict>& verdicts);
    Outcome lookAtEnded(Tracked& tracked, const Present& present, BootTime now,
                        std::vector<Verdict>& verdicts);
    Outcome lookAtRunning(Tracked& tracked, const Present& present, BootTime now,
                          std::vector<Verdict>& verdicts);
    void planNextLook(Tracked& tracked, BootTime now) const;
    std::optional<PortAnswer> answerFor(const Attempt& attempt, const Present& present) const;
    std::optional<Verdict> judge(const Attempt& attempt, Verdict::Kind kind, const Present& present,
                                 const std::vector<ListeningSocket>& foreign,
                                 const PortAnswer& answer, BootTime evidenceAt) const;
    void conclude(const Tracked& tracked, const Evidence& evidence, Verdict verdict, BootTime now,
                  std::vector<Verdict>& verdicts);
    bool announce(const Attempt& attempt, const Verdict& verdict, BootTime now);
    // What runtimes probe at their start leaves dead sockets too, which say something only of those
    // that can't have got as far as that.
    enum class Probes : std::uint8_t { ignored, counted };
    Evidence evidenceFor(const Tracked& tracked, const Present& present, BootTime now,
                         Probes probes = Probes::ignored);
    std::optional<Verdict> judgeDebugger(const Attempt& attempt, Verdict::Kind kind,
                                         const Present& present,
                                         const std::vector<ListeningSocket>& foreign,
                                         BootTime evidenceAt) const;
    bool mayBeOthers(const Tracked& tracked, const Present& present, BootTime diedAt) const;
    void suspect(const Tracked& tracked);
    void remember(const Attempt& attempt, std::span<const ListeningSocket> own);

    DeadSockets deadSocketsSeen_;
    Ends ends_;
    std::vector<Tracked> attempts_;
    std::deque<DeadSocket> deadSockets_;
    std::deque<BootTime> failedConnections_; // whose sockets have not died yet
    std::uint64_t foundFailedConnections_{0};
    std::deque<Suspect> suspects_;
    BootTime lastProbeAt_{-1'000'000};
    BootTime lastNameQuestionAt_{-1'000'000};
    std::vector<Announcement> announcements_;
    std::map<std::size_t, std::vector<std::uint16_t>> usedPorts_; // by command, of earlier runs
};

} // namespace zenlot
