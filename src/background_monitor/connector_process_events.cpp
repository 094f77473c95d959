#include "background_monitor/connector_process_events.h"

#include "background_monitor/attempt_reader.h"

#include <sys/wait.h>

#include <csignal>
#include <utility>

namespace zenlot {
namespace {

constexpr int kShellsOffset = 128; // what shells and many programs add to a signal's number

bool isPeoplesSignal(int signal) {
    switch (signal) {
    case SIGHUP:
    case SIGINT:
    case SIGKILL:
    case SIGPIPE:
    case SIGQUIT:
    case SIGTERM:
        return true;
    default:
        return false;
    }
}

} // namespace

ConnectorProcessEvents::ConnectorProcessEvents(std::unique_ptr<ProcessConnector> connector)
    : connector_(std::move(connector)), notifier_(connector_->descriptor(), QSocketNotifier::Read) {
    notifier_.setEnabled(false);
    QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this] {
        if (!connector_->read([this](const ProcessEvent& event) { handle(event); }))
            handlers_.missed();
    });
}

void ConnectorProcessEvents::start(Handlers handlers) {
    handlers_ = std::move(handlers);
    notifier_.setEnabled(true);
}

void ConnectorProcessEvents::handle(const ProcessEvent& event) {
    if (event.kind == ProcessEvent::Kind::exit) {
        handlers_.ended(event.pid, processEndOf(event.waitStatus));
        return;
    }
    const BootTime now = bootTimeNow();
    if (now - secondStart_ >= BootTime(1000)) {
        secondStart_ = now;
        startsInSecond_ = 0;
    }
    if (++startsInSecond_ <= kMostStarts)
        handlers_.started(event.pid);
}

ProcessEnd processEndOf(int waitStatus) {
    if (WIFSIGNALED(waitStatus))
        return isPeoplesSignal(WTERMSIG(waitStatus)) ? ProcessEnd::stopped : ProcessEnd::failed;
    const int code = WEXITSTATUS(waitStatus);
    return code == 0 || isPeoplesSignal(code - kShellsOffset) ? ProcessEnd::stopped
                                                              : ProcessEnd::failed;
}

} // namespace zenlot
