#include "managers/linux/network_manager_networks.h"

#include "managers/linux/system_bus.h"

#include <cstdint>

namespace zenlot {
namespace {

constexpr const char* kNetworkManager = "org.freedesktop.NetworkManager";
constexpr std::uint64_t kPatienceWithNetworks = 1'000'000; // microseconds

// Nobody starts it for this question, and nobody waits long for its answer.
Message askNetworkManager(sd_bus* bus, const char* path, const char* interface, const char* member,
                          const char* types, const char* first, const char* second = nullptr) {
    sd_bus_message* question = nullptr;
    if (sd_bus_message_new_method_call(bus, &question, kNetworkManager, path, interface, member) <
        0)
        return nullptr;
    const Message kept(question);
    sd_bus_message_set_auto_start(question, 0);
    sd_bus_message* answer = nullptr;
    if (sd_bus_message_append(question, types, first, second) < 0 ||
        sd_bus_call(bus, question, kPatienceWithNetworks, nullptr, &answer) < 0)
        return nullptr;
    return Message(answer);
}

Message networkProperty(sd_bus* bus, const char* path, const char* interface, const char* name,
                        const char* type) {
    Message answer = askNetworkManager(bus, path, "org.freedesktop.DBus.Properties", "Get", "ss",
                                       interface, name);
    return answer && sd_bus_message_enter_container(answer.get(), 'v', type) > 0 ? std::move(answer)
                                                                                 : nullptr;
}

// Empty without one.
std::string pathIn(const Message& answer) {
    const char* path = nullptr;
    return answer && sd_bus_message_read(answer.get(), "o", &path) > 0 ? path : "";
}

} // namespace

std::string NetworkManagerNetworks::nameOf(const std::string& interface) const {
    const Bus bus = openSystemBus();
    if (!bus)
        return {};
    const std::string device =
        pathIn(askNetworkManager(bus.get(), "/org/freedesktop/NetworkManager", kNetworkManager,
                                 "GetDeviceByIpIface", "s", interface.c_str()));
    if (device.empty())
        return {};
    const std::string accessPoint = pathIn(
        networkProperty(bus.get(), device.c_str(), "org.freedesktop.NetworkManager.Device.Wireless",
                        "ActiveAccessPoint", "o"));
    if (accessPoint.empty())
        return {};
    const Message name = networkProperty(
        bus.get(), accessPoint.c_str(), "org.freedesktop.NetworkManager.AccessPoint", "Ssid", "ay");
    const void* bytes = nullptr;
    std::size_t size = 0;
    if (!name || sd_bus_message_read_array(name.get(), 'y', &bytes, &size) < 0)
        return {};
    return {static_cast<const char*>(bytes), size};
}

} // namespace zenlot
