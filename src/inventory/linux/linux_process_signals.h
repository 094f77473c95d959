// Sends signals through a pidfd, to the process that was looked at and to no other; see
// linux_process_pinner.h.
#pragma once

#include "inventory/linux/linux_process_pinner.h"
#include "inventory/origin/port_stopper.h"

namespace zenlot {

class LinuxProcessSignals final : public ProcessSignals {
  public:
    bool send(const ProcessIdentity& process, Signal signal) const override;

  private:
    LinuxProcessPinner pinner_;
};

} // namespace zenlot
