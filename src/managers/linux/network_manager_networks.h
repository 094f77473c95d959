// Wireless networks as NetworkManager tells them, where it runs.
#pragma once

#include "inventory/origin/wireless_networks.h"

namespace zenlot {

class NetworkManagerNetworks final : public WirelessNetworks {
  public:
    std::string nameOf(const std::string& interface) const override;
};

} // namespace zenlot
