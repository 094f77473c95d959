// Process events by comparing the list of processes with that of the last time: when asked, and a
// moment after somebody has opened one of the programs that run servers, as everybody does who
// starts it. How a process ended is not seen, nor a process that came and went in between, nor that
// one runs another program later on.
#pragma once

#include "background_monitor/process_events.h"
#include "inventory/linux/proc_files.h"
#include "posix/file_descriptor.h"

#include <QSocketNotifier>
#include <QTimer>

#include <memory>
#include <string>
#include <vector>

namespace zenlot {

class PollingProcessEvents final : public ProcessEvents {
  public:
    // `programFolders` are where the programs to watch are looked for.
    explicit PollingProcessEvents(std::vector<std::string> programFolders = {},
                                  const std::string& procRoot = "/proc");

    // Processes that are there already have not started.
    void start(Handlers handlers) override;
    void poll() override;
    bool comesByItself() const override { return false; }

  private:
    std::vector<ProcessId> sortedPids() const;
    void watchPrograms();
    void noteOpenedProgram();

    ProcFiles procFiles_;
    Handlers handlers_;
    std::vector<ProcessId> known_;
    std::vector<ProcessId> young_; // that the last poll found
    std::vector<std::string> programFolders_;
    FileDescriptor programs_;
    std::unique_ptr<QSocketNotifier> programNotifier_;
    QTimer pollSoon_;
    BootTime lastPoll_{0};
    BootTime lastWatch_{0};
};

} // namespace zenlot
