// Which service or container a listening port belongs to, also where its process is not to be seen.
//
//     services.serviceOnPort(5432) // "postgresql.service"
#pragma once

#include <cstdint>
#include <string>

namespace zenlot {

class PortServices {
  public:
    PortServices() = default;
    PortServices(const PortServices&) = delete;
    PortServices& operator=(const PortServices&) = delete;
    virtual ~PortServices() = default;

    // The name of the system's unit, such as nginx.service or docker-3f2a….scope, as UTF-8 with
    // U+FFFD for what is not; empty when nobody listens or it can't be told. Blocks, and may be
    // called from several threads at once.
    virtual std::string serviceOnPort(std::uint16_t port) const = 0;
};

} // namespace zenlot
