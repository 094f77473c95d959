// Which processes start and end. There is an implementation that is told by the kernel
// (ConnectorProcessEvents) and one that compares the list of processes (PollingProcessEvents).
//
// Everything belongs to the main thread. A started process may be gone by the time it is announced.
#pragma once

#include "background_monitor/attempt_tracker.h"
#include "inventory/process_tables.h"

#include <functional>

namespace zenlot {

class ProcessEvents {
  public:
    struct Handlers {
        std::function<void(ProcessId pid)> started;
        std::function<void(ProcessId pid, ProcessEnd end)> ended;
        std::function<void()> missed; // some of both were lost on the way
    };

    ProcessEvents() = default;
    ProcessEvents(const ProcessEvents&) = delete;
    ProcessEvents& operator=(const ProcessEvents&) = delete;
    virtual ~ProcessEvents() = default;

    // Calls the handlers from now on.
    virtual void start(Handlers handlers) = 0;

    // Looks at the processes now, where that is how they are noticed.
    virtual void poll() = 0;

    // Whether events come by themselves.
    virtual bool comesByItself() const = 0;
};

} // namespace zenlot
