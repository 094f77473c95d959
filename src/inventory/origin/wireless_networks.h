// What the wireless networks are called that this machine is in.
#pragma once

#include <string>

namespace zenlot {

class WirelessNetworks {
  public:
    WirelessNetworks() = default;
    WirelessNetworks(const WirelessNetworks&) = delete;
    WirelessNetworks& operator=(const WirelessNetworks&) = delete;
    virtual ~WirelessNetworks() = default;

    // Empty when it is in none by that interface, or nobody tells. Bytes and all.
    virtual std::string nameOf(const std::string& interface) const = 0;
};

} // namespace zenlot
