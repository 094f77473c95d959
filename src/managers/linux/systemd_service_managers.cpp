#include "managers/linux/systemd_service_managers.h"

#include "managers/linux/system_bus.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <thread>

namespace zenlot {
namespace {

using namespace std::chrono_literals;

constexpr const char* kManager = "org.freedesktop.systemd1";
constexpr const char* kUnit = "org.freedesktop.systemd1.Unit";
// Somebody may have to find a password.
constexpr std::uint64_t kPatienceWithPeople = 180'000'000; // microseconds
constexpr auto kPatienceWithUnits = 30s;
constexpr auto kStep = 50ms;

class BusError {
  public:
    BusError() = default;
    BusError(const BusError&) = delete;
    BusError& operator=(const BusError&) = delete;
    ~BusError() { sd_bus_error_free(&error_); }
    sd_bus_error* get() { return &error_; }
    std::string text(int result) const {
        return error_.message != nullptr ? error_.message : std::strerror(-result);
    }

  private:
    sd_bus_error error_ = SD_BUS_ERROR_NULL;
};

Bus openBus(const Unit& unit) {
    return unit.manager == Unit::Manager::user ? openUserBus() : openSystemBus();
}

// The manager loads a unit that it is asked about by name; this path is that of one it has.
std::string pathOf(const Unit& unit) {
    char* path = nullptr;
    if (sd_bus_path_encode("/org/freedesktop/systemd1/unit", unit.name.c_str(), &path) < 0)
        return {};
    const std::unique_ptr<char, decltype(&std::free)> kept(path, std::free);
    return path;
}

std::string invocationOn(sd_bus* bus, const Unit& unit) {
    sd_bus_message* answer = nullptr;
    if (sd_bus_get_property(bus, kManager, pathOf(unit).c_str(), kUnit, "InvocationID", nullptr,
                            &answer, "ay") < 0)
        return {};
    const Message kept(answer);
    const void* bytes = nullptr;
    std::size_t size = 0;
    if (sd_bus_message_read_array(answer, 'y', &bytes, &size) < 0)
        return {};
    std::string text;
    for (std::size_t place = 0; place < size; ++place) {
        std::array<char, 3> digits{};
        std::snprintf(digits.data(), digits.size(), "%02x",
                      static_cast<const unsigned char*>(bytes)[place]);
        text += digits.data();
    }
    return text;
}

std::string stateOn(sd_bus* bus, const Unit& unit) {
    char* state = nullptr;
    if (sd_bus_get_property_string(bus, kManager, pathOf(unit).c_str(), kUnit, "ActiveState",
                                   nullptr, &state) < 0)
        return {};
    const std::unique_ptr<char, decltype(&std::free)> kept(state, std::free);
    return state;
}

} // namespace

std::string SystemdServiceManagers::invocation(const Unit& unit) const {
    const Bus bus = openBus(unit);
    return bus ? invocationOn(bus.get(), unit) : std::string();
}

std::string SystemdServiceManagers::stop(const Unit& unit, const std::string& invocation) const {
    const Bus bus = openBus(unit);
    if (!bus)
        return "the service manager can't be reached";
    if (invocationOn(bus.get(), unit) != invocation)
        return "it has been started anew since";
    sd_bus_message* question = nullptr;
    if (sd_bus_message_new_method_call(bus.get(), &question, kManager, "/org/freedesktop/systemd1",
                                       "org.freedesktop.systemd1.Manager", "StopUnit") < 0)
        return "there is no memory";
    const Message kept(question);
    sd_bus_message_set_allow_interactive_authorization(question, 1);
    if (sd_bus_message_append(question, "ss", unit.name.c_str(), "replace") < 0)
        return "there is no memory";
    BusError error;
    const int result = sd_bus_call(bus.get(), question, kPatienceWithPeople, error.get(), nullptr);
    if (result < 0)
        return error.text(result);
    // The answer is that it has begun.
    for (auto waited = 0ms; waited < kPatienceWithUnits; waited += kStep) {
        const std::string state = stateOn(bus.get(), unit);
        if (state.empty() || state == "inactive" || state == "failed")
            return {};
        std::this_thread::sleep_for(kStep);
    }
    return "it is still ending";
}

} // namespace zenlot
