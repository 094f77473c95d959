// The managers that are asked over the system's bus, against stand-ins on a bus of the test's own.
#include "managers/linux/network_manager_networks.h"
#include "managers/linux/system_bus.h"
#include "managers/linux/systemd_service_managers.h"
#include "support/child_process.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>

namespace zenlot {
namespace {

using namespace std::chrono_literals;

// Owns a name on a bus, and answers from a thread until it goes.
class StandIn {
  public:
    // Answers a call by itself, and is found by the path and the name of the method, or of the
    // property that is asked for.
    using Answer = std::function<int(sd_bus_message*)>;

    StandIn(const char* name, std::map<std::string, Answer> answers)
        : answers_(std::move(answers)) {
        const std::string address = "unix:path=" + (folder_.path() / "bus").string();
        ::setenv("DBUS_SYSTEM_BUS_ADDRESS", address.c_str(), 1);
        daemon_.emplace([&address] {
            ::execlp("dbus-daemon", "dbus-daemon", "--session", "--nofork", "--nopidfile",
                     ("--address=" + address).c_str(), nullptr);
            return false;
        });
        const auto deadline = std::chrono::steady_clock::now() + 60s;
        while (!(bus_ = openSystemBus())) {
            if (std::chrono::steady_clock::now() > deadline)
                throw std::runtime_error("no bus");
            std::this_thread::sleep_for(10ms);
        }
        sd_bus_add_filter(bus_.get(), nullptr, &StandIn::filter, this);
        if (sd_bus_request_name(bus_.get(), name, 0) < 0)
            throw std::runtime_error("no name");
        thread_ = std::jthread([this](const std::stop_token& stop) {
            constexpr std::uint64_t kLook = 20'000; // microseconds
            while (!stop.stop_requested()) {
                if (sd_bus_process(bus_.get(), nullptr) == 0)
                    sd_bus_wait(bus_.get(), kLook);
            }
        });
    }

  private:
    static int filter(sd_bus_message* message, void* self, sd_bus_error* /*error*/) {
        std::uint8_t type = 0;
        sd_bus_message_get_type(message, &type);
        if (type != SD_BUS_MESSAGE_METHOD_CALL)
            return 0;
        const char* member = sd_bus_message_get_member(message);
        if (std::string(member) == "Get")
            sd_bus_message_read(message, "ss", nullptr, &member);
        const std::map<std::string, Answer>& answers = static_cast<StandIn*>(self)->answers_;
        const auto found =
            answers.find(std::string(sd_bus_message_get_path(message)) + " " + member);
        return found == answers.end() ? 0 : found->second(message);
    }

    TemporaryFolder folder_;
    std::map<std::string, Answer> answers_;
    std::optional<ChildProcess> daemon_;
    Bus bus_;
    std::jthread thread_; // the last member: it uses the bus
};

TEST(NetworkManagerNetworksTest, TellsTheNameOfANetwork) {
    const NetworkManagerNetworks networks;
    const StandIn manager(
        "org.freedesktop.NetworkManager",
        {{"/org/freedesktop/NetworkManager GetDeviceByIpIface",
          [](sd_bus_message* call) {
              const char* interface = nullptr;
              sd_bus_message_read(call, "s", &interface);
              return sd_bus_reply_method_return(
                  call, "o", std::string(interface) == "wlan0" ? "/device/1" : "/device/2");
          }},
         {"/device/1 ActiveAccessPoint",
          [](sd_bus_message* call) {
              return sd_bus_reply_method_return(call, "v", "o", "/point/1");
          }},
         {"/point/1 Ssid", [](sd_bus_message* call) {
              return sd_bus_reply_method_return(call, "v", "ay", 4, 'C', 'a', 'f', 0xFF);
          }}});
    EXPECT_EQ(networks.nameOf("wlan0"), "Caf\xff");
    EXPECT_EQ(networks.nameOf("eth0"), "");
}

TEST(SystemdServiceManagersTest, StopsTheRunThatWasSeenAndLetsSomebodyAsk) {
    std::atomic<const char*> state = "active";
    std::atomic<int> run = 1;
    std::atomic<bool> mayAsk = false;
    std::atomic<bool> isAllowed = false;
    const std::string path = "/org/freedesktop/systemd1/unit/web_2eservice ";
    const StandIn manager("org.freedesktop.systemd1",
                          {{path + "InvocationID",
                            [&](sd_bus_message* call) {
                                return sd_bus_reply_method_return(call, "v", "ay", 1, run.load());
                            }},
                           {path + "ActiveState",
                            [&](sd_bus_message* call) {
                                return sd_bus_reply_method_return(call, "v", "s", state.load());
                            }},
                           {"/org/freedesktop/systemd1 StopUnit", [&](sd_bus_message* call) {
                                mayAsk =
                                    sd_bus_message_get_allow_interactive_authorization(call) > 0;
                                if (!isAllowed)
                                    return sd_bus_reply_method_errorf(
                                        call, SD_BUS_ERROR_ACCESS_DENIED, "Permission denied");
                                state = "inactive";
                                return sd_bus_reply_method_return(call, "o", "/job");
                            }}});
    const SystemdServiceManagers managers;
    const Unit unit{Unit::Manager::system, "web.service", 0};
    const std::string seen = managers.invocation(unit);
    EXPECT_EQ(seen, "01");
    EXPECT_EQ(managers.stop(unit, seen), "Permission denied");
    EXPECT_TRUE(mayAsk);
    run = 2;
    EXPECT_EQ(managers.stop(unit, seen), "it has been started anew since");
    isAllowed = true;
    EXPECT_STREQ(state, "active");
    EXPECT_EQ(managers.stop(unit, "02"), "");
    EXPECT_STREQ(state, "inactive");
}

} // namespace
} // namespace zenlot
