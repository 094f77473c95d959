// Process events as the kernel tells them, see inventory/linux/process_connector.h.
//
// Above kMostStarts in a second the rest of that second's starts are left out: whatever starts so
// many processes is no person starting a server.
#pragma once

#include "background_monitor/process_events.h"
#include "inventory/linux/process_connector.h"

#include <QSocketNotifier>

#include <memory>

namespace zenlot {

class ConnectorProcessEvents final : public ProcessEvents {
  public:
    static constexpr int kMostStarts = 500;

    // `connector` is open.
    explicit ConnectorProcessEvents(std::unique_ptr<ProcessConnector> connector);

    void start(Handlers handlers) override;
    void poll() override {}
    bool comesByItself() const override { return true; }

  private:
    void handle(const ProcessEvent& event);

    std::unique_ptr<ProcessConnector> connector_;
    QSocketNotifier notifier_;
    Handlers handlers_;
    BootTime secondStart_{0};
    int startsInSecond_{0};
};

// How a process ended that wait() reports so. Only failures come from the kernel at all.
ProcessEnd processEndOf(int waitStatus);

} // namespace zenlot
