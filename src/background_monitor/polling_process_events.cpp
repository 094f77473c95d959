#include "background_monitor/polling_process_events.h"

#include "background_monitor/attempt_reader.h"

#include <sys/inotify.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace zenlot {
namespace {

// What runs servers, and is installed where it can be watched.
constexpr std::array kPrograms{"node",      "nodejs",       "deno",    "bun",   "python3", "python",
                               "ruby",      "php",          "perl",    "java",  "lua5.4",  "erl",
                               "escript",   "elixir",       "Rscript", "hugo",  "dotnet",  "go",
                               "cargo",     "redis-server", "nginx",   "caddy", "symfony", "docker",
                               "memcached", "mosquitto"};

// A program is opened before it is the process's own.
constexpr BootTime kUntilItRuns{12};
// However many are opened.
constexpr BootTime kPauseBetweenPolls{80};

constexpr BootTime kPauseBetweenWatches{60'000};

} // namespace

PollingProcessEvents::PollingProcessEvents(std::vector<std::string> programFolders,
                                           const std::string& procRoot)
    : procFiles_(procRoot), programFolders_(std::move(programFolders)),
      programs_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    pollSoon_.setSingleShot(true);
    pollSoon_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&pollSoon_, &QTimer::timeout, &pollSoon_, [this] { poll(); });
}

void PollingProcessEvents::start(Handlers handlers) {
    handlers_ = std::move(handlers);
    known_ = sortedPids();
    if (!programs_)
        return;
    watchPrograms();
    programNotifier_ = std::make_unique<QSocketNotifier>(programs_.get(), QSocketNotifier::Read);
    QObject::connect(programNotifier_.get(), &QSocketNotifier::activated, &pollSoon_,
                     [this] { noteOpenedProgram(); });
}

// Again and again: an update puts another file in a program's place, and programs are installed.
// What is watched already stays so.
void PollingProcessEvents::watchPrograms() {
    for (const std::string& folder : programFolders_) {
        for (const char* program : kPrograms)
            ::inotify_add_watch(programs_.get(), (folder + "/" + program).c_str(), IN_OPEN);
    }
    lastWatch_ = bootTimeNow();
}

void PollingProcessEvents::poll() {
    lastPoll_ = bootTimeNow();
    if (programs_ && lastPoll_ - lastWatch_ >= kPauseBetweenWatches)
        watchPrograms();
    std::vector<ProcessId> present = sortedPids();
    std::vector<ProcessId> ended;
    std::ranges::set_difference(known_, present, std::back_inserter(ended));
    std::vector<ProcessId> started;
    std::ranges::set_difference(present, known_, std::back_inserter(started));
    known_ = std::move(present);
    // Who has just failed has not long to live, and was started lately.
    std::for_each(started.rbegin(), started.rend(), handlers_.started);
    // Between its start and its program a process looks like its parent.
    for (const ProcessId pid : young_)
        handlers_.started(pid);
    young_ = std::move(started);
    for (const ProcessId pid : ended)
        handlers_.ended(pid, ProcessEnd::failed);
}

std::vector<ProcessId> PollingProcessEvents::sortedPids() const {
    std::vector<ProcessId> pids = procFiles_.pids();
    std::ranges::sort(pids);
    return pids;
}

void PollingProcessEvents::noteOpenedProgram() {
    std::array<char, 4096> events;
    while (::read(programs_.get(), events.data(), events.size()) > 0) {
    }
    if (!pollSoon_.isActive())
        pollSoon_.start(std::max(kUntilItRuns, lastPoll_ + kPauseBetweenPolls - bootTimeNow()));
}

} // namespace zenlot
