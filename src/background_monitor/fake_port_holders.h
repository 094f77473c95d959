// Holders that a test makes up.
#pragma once

#include "background_monitor/port_holders.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>

namespace zenlot {

class FakePortHolders final : public PortHolders {
  public:
    std::map<std::uint16_t, HolderAnswer> answers; // by port; nobody holds another
    std::set<ProcessId> shells;
    std::map<ProcessId, std::size_t> commandKeys;
    std::map<ProcessId, std::uint16_t> knownToWant;
    mutable int questions{0};

    HolderAnswer holderFor(const BindEvent& refused) const override {
        ++questions;
        const auto found = answers.find(refused.port);
        return found == answers.end() ? HolderAnswer{} : found->second;
    }

    bool isKnownToWant(ProcessId pid, std::uint16_t port) const override {
        const auto found = knownToWant.find(pid);
        return found != knownToWant.end() && found->second == port;
    }

    std::size_t commandKeyOf(ProcessId pid) const override {
        const auto found = commandKeys.find(pid);
        return found == commandKeys.end() ? 0 : found->second;
    }

    bool isShellOfTerminal(ProcessId pid) const override { return shells.contains(pid); }
};

} // namespace zenlot
