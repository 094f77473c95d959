// Connections to a bus and what comes over them, each closed by its owner.
#pragma once

#include <systemd/sd-bus.h>

#include <memory>

namespace zenlot {

struct BusEnd {
    void operator()(sd_bus* bus) const { sd_bus_flush_close_unref(bus); }
};
struct MessageEnd {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Bus = std::unique_ptr<sd_bus, BusEnd>;
using Message = std::unique_ptr<sd_bus_message, MessageEnd>;

// None where there is no bus.
inline Bus openSystemBus() {
    sd_bus* bus = nullptr;
    return Bus(sd_bus_open_system(&bus) < 0 ? nullptr : bus);
}
inline Bus openUserBus() {
    sd_bus* bus = nullptr;
    return Bus(sd_bus_open_user(&bus) < 0 ? nullptr : bus);
}

} // namespace zenlot
