// A kernel without socket diagnostics, for tests.
#pragma once

#include "inventory/linux/netlink_transport.h"

namespace zenlot {

class SilentNetlinkTransport final : public NetlinkTransport {
  public:
    bool dump(std::span<const std::byte> /*request*/, const Consumer& /*consume*/) override {
        return false;
    }
};

} // namespace zenlot
