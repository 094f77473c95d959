// Decides which of the servers that were just started could not have their port, and who holds it.
//
// Pure: it is told of processes and of sockets as they come and go, with the time of each event; it
// says when it wants to look, and looks through a Machine. The evidence is one of
//
//   - failed start: the process ended with an error, right after some TCP socket had died without
//     ever getting an address;
//   - drift: after such a death the process, or one that it started, listens on another port;
//   - going on: after such a death a tool that asks or tries again listens nowhere;
//
// and in each case the port that it wants is held by a process that was there before and that is
// neither its ancestor nor its descendant. A crash for another reason leaves no dead socket, so it
// is no conflict, even while somebody holds the port.
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

    // None when nobody holds the socket any more.
    virtual std::optional<PortHolder> holderOf(const ListeningSocket& socket) const = 0;

    // The likeliest ports of those that the attempt's own files name; `held` are those to look for
    // in files that are no text.
    virtual std::vector<std::uint16_t> writtenPorts(const Attempt& attempt,
                                                    std::span<const std::uint16_t> held) const = 0;
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
};

class AttemptTracker {
  public:
    // How long after its start a server can still be told to have failed to start. Large programs
    // take their time before they ask for their port.
    static constexpr BootTime kFirstSeconds{20'000};
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
    };
    struct DeadSocket {
        BootTime at;
        AddressFamily family;
    };
    struct Announcement {
        std::size_t commandKey;
        ProcessId origin;
        std::uint16_t port;
        ProcessId holder;
        BootTime announcedAt;
        BootTime lastFailedAt;
    };
    enum class Outcome : std::uint8_t { keepLooking, done };

    Outcome lookAt(Tracked& tracked, const Machine& machine, BootTime now,
                   std::vector<Verdict>& verdicts);
    Outcome lookAtEnded(Tracked& tracked, const Machine& machine, BootTime now,
                        std::vector<Verdict>& verdicts);
    Outcome lookAtRunning(Tracked& tracked, const Machine& machine, BootTime now,
                          std::vector<Verdict>& verdicts);
    std::vector<std::uint16_t> wantedPorts(const Attempt& attempt, const Machine& machine,
                                           const std::vector<ListeningSocket>& listening) const;
    std::optional<Verdict> judge(const Attempt& attempt, Verdict::Kind kind, const Machine& machine,
                                 const std::vector<ListeningSocket>& foreign,
                                 const std::vector<std::uint16_t>& wanted) const;
    bool announce(const Attempt& attempt, const Verdict& verdict, BootTime now);
    std::deque<DeadSocket>::iterator evidenceFor(const Tracked& tracked, BootTime now);
    void remember(const Attempt& attempt, std::span<const ListeningSocket> own);

    DeadSockets deadSocketsSeen_;
    Ends ends_;
    std::vector<Tracked> attempts_;
    std::deque<DeadSocket> deadSockets_;
    BootTime lastProbeAt_{-1'000'000};
    std::vector<Announcement> announcements_;
    std::map<std::size_t, std::uint16_t> usedPorts_; // by command, of earlier runs
};

} // namespace zenlot
