// systemd, of the machine and of the user that this program runs as. To stop a unit of the system,
// polkit asks the user by its own dialog where its rules say so.
#pragma once

#include "inventory/origin/port_stopper.h"

namespace zenlot {

class SystemdServiceManagers final : public ServiceManagers {
  public:
    std::string invocation(const Unit& unit) const override;
    std::string stop(const Unit& unit, const std::string& invocation) const override;
};

} // namespace zenlot
