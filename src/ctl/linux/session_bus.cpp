#include "ctl/linux/session_bus.h"

#include <systemd/sd-bus.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace zenlot {
namespace {

constexpr std::uint64_t kPatience = 1'000'000; // microseconds

struct MessageEnd {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, MessageEnd>;

constexpr const char* kManager = "org.freedesktop.systemd1";
constexpr const char* kManagerInterface = "org.freedesktop.systemd1.Manager";

// A call with one text for the answer's message; null when it fails.
Message call(sd_bus* bus, const char* service, const char* path, const char* interface,
             const char* method, const char* argument) {
    sd_bus_message* question = nullptr;
    if (bus == nullptr ||
        sd_bus_message_new_method_call(bus, &question, service, path, interface, method) < 0)
        return nullptr;
    const Message asked(question);
    sd_bus_message_set_auto_start(question, 0);
    if (argument != nullptr && sd_bus_message_append(question, "s", argument) < 0)
        return nullptr;
    sd_bus_message* answer = nullptr;
    sd_bus_call(bus, question, kPatience, nullptr, &answer);
    return Message(answer);
}

std::string textIn(const Message& answer, char type) {
    const char* text = nullptr;
    if (!answer || sd_bus_message_read_basic(answer.get(), type, &text) <= 0)
        return {};
    return text;
}

} // namespace

void SessionBus::Closer::operator()(sd_bus* bus) const {
    sd_bus_close_unref(bus);
}

SessionBus::SessionBus() {
    sd_bus* bus = nullptr;
    const int result = sd_bus_open_user(&bus);
    if (result < 0)
        failure_ = result == -ENOMEDIUM ? "no address is known" : std::strerror(-result);
    else
        bus_.reset(bus);
}

std::optional<int> SessionBus::ownerOf(const std::string& name) const {
    constexpr const char* kBus = "org.freedesktop.DBus";
    const Message answer = call(bus_.get(), kBus, "/org/freedesktop/DBus", kBus,
                                "GetConnectionUnixProcessID", name.c_str());
    std::uint32_t pid = 0;
    if (!answer || sd_bus_message_read_basic(answer.get(), 'u', &pid) <= 0)
        return std::nullopt;
    return static_cast<int>(pid);
}

std::vector<std::string> SessionBus::notificationCapabilities() const {
    constexpr const char* kServer = "org.freedesktop.Notifications";
    const Message answer = call(bus_.get(), kServer, "/org/freedesktop/Notifications", kServer,
                                "GetCapabilities", nullptr);
    std::vector<std::string> capabilities;
    if (!answer || sd_bus_message_enter_container(answer.get(), 'a', "s") <= 0)
        return capabilities;
    constexpr std::size_t kMost = 64;
    for (std::string each = textIn(answer, 's'); !each.empty() && capabilities.size() < kMost;
         each = textIn(answer, 's'))
        capabilities.push_back(each);
    return capabilities;
}

std::string SessionBus::unitFileState(const std::string& unit) const {
    return textIn(call(bus_.get(), kManager, "/org/freedesktop/systemd1", kManagerInterface,
                       "GetUnitFileState", unit.c_str()),
                  's');
}

std::string SessionBus::activeState(const std::string& unit) const {
    const std::string path = textIn(call(bus_.get(), kManager, "/org/freedesktop/systemd1",
                                         kManagerInterface, "LoadUnit", unit.c_str()),
                                    'o');
    char* state = nullptr;
    if (path.empty() || sd_bus_get_property_string(bus_.get(), kManager, path.c_str(),
                                                   "org.freedesktop.systemd1.Unit", "ActiveState",
                                                   nullptr, &state) < 0)
        return {};
    const std::unique_ptr<char, decltype(&std::free)> kept(state, std::free);
    return state;
}

} // namespace zenlot
