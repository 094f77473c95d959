#include "managers/linux/socket_container_engines.h"

#include "inventory/process_names.h"

#include <nlohmann/json.hpp>

#include <curl/curl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <mutex>
#include <utility>

namespace zenlot {
namespace {

using Json = nlohmann::json;
using namespace std::chrono_literals;

constexpr std::size_t kLargestAnswer = std::size_t{8} * 1024 * 1024;
constexpr auto kPatience = 2s;
// The engine gives the container ten seconds by itself.
constexpr auto kPatienceWithTheEnd = 30s;

struct Answer {
    long status{0}; // 0 when there was none
    std::string text;
};

std::size_t append(char* data, std::size_t size, std::size_t count, void* target) {
    auto& text = *static_cast<std::string*>(target);
    if (text.size() + size * count > kLargestAnswer)
        return 0;
    text.append(data, size * count);
    return size * count;
}

enum class Method : std::uint8_t { get, post };

Answer ask(const std::string& socket, const std::string& path, Method method,
           std::chrono::milliseconds patience) {
    static std::once_flag prepared;
    std::call_once(prepared, [] { curl_global_init(CURL_GLOBAL_NOTHING); });
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> call(curl_easy_init(),
                                                                   curl_easy_cleanup);
    Answer answer;
    if (!call)
        return answer;
    const std::string address = "http://localhost" + path;
    curl_easy_setopt(call.get(), CURLOPT_UNIX_SOCKET_PATH, socket.c_str());
    curl_easy_setopt(call.get(), CURLOPT_URL, address.c_str());
    curl_easy_setopt(call.get(), CURLOPT_PROTOCOLS_STR, "http");
    curl_easy_setopt(call.get(), CURLOPT_NOPROXY, "*");
    curl_easy_setopt(call.get(), CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(call.get(), CURLOPT_TIMEOUT_MS, static_cast<long>(patience.count()));
    curl_easy_setopt(call.get(), CURLOPT_WRITEFUNCTION, append);
    curl_easy_setopt(call.get(), CURLOPT_WRITEDATA, &answer.text);
    if (method == Method::post) {
        curl_easy_setopt(call.get(), CURLOPT_POST, 1L);
        curl_easy_setopt(call.get(), CURLOPT_POSTFIELDSIZE, 0L);
    }
    if (curl_easy_perform(call.get()) == CURLE_OK)
        curl_easy_getinfo(call.get(), CURLINFO_RESPONSE_CODE, &answer.status);
    return answer;
}

std::string textOf(const Json& object, const char* key) {
    const auto found = object.find(key);
    return found != object.end() && found->is_string() ? sanitizedUtf8(found->get<std::string>())
                                                       : std::string();
}

std::uint16_t portOf(const Json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end() || !found->is_number_unsigned())
        return 0;
    const auto number = found->get<std::uint64_t>();
    return number <= 65535 ? static_cast<std::uint16_t>(number) : std::uint16_t{0};
}

RunningContainer containerOf(const Json& object) {
    RunningContainer running;
    Container& container = running.container;
    container.id = textOf(object, "Id");
    container.image = textOf(object, "Image");
    if (const auto names = object.find("Names"); names != object.end() && names->is_array() &&
                                                 !names->empty() && names->front().is_string()) {
        container.name = sanitizedUtf8(names->front().get<std::string>());
        if (container.name.starts_with('/'))
            container.name.erase(0, 1);
    }
    if (const auto labels = object.find("Labels"); labels != object.end() && labels->is_object()) {
        container.composeProject = textOf(*labels, "com.docker.compose.project");
        container.composeService = textOf(*labels, "com.docker.compose.service");
    }
    if (const auto ports = object.find("Ports"); ports != object.end() && ports->is_array()) {
        for (const Json& port : *ports) {
            if (port.is_object() && portOf(port, "PublicPort") != 0 &&
                textOf(port, "Type") == "tcp")
                running.ports.emplace_back(portOf(port, "PublicPort"), portOf(port, "PrivatePort"));
        }
    }
    return running;
}

bool isId(const std::string& text) {
    return !text.empty() && text.find_first_not_of("0123456789abcdef") == std::string::npos;
}

std::vector<RunningContainer> containersOf(const std::string& socket) {
    if (::access(socket.c_str(), R_OK | W_OK) != 0)
        return {};
    const Answer answer = ask(socket, "/containers/json", Method::get, kPatience);
    std::vector<RunningContainer> containers;
    if (answer.status == 200)
        containers = decodeContainers(answer.text);
    const char* engine = socket.find("podman") == std::string::npos ? "docker" : "podman";
    for (RunningContainer& running : containers)
        running.container.engine = engine;
    return containers;
}

} // namespace

std::vector<RunningContainer> decodeContainers(std::string_view json) {
    std::vector<RunningContainer> containers;
    const Json list = Json::parse(json, nullptr, false);
    if (!list.is_array())
        return containers;
    for (const Json& each : list) {
        if (!each.is_object())
            continue;
        RunningContainer running = containerOf(each);
        if (isId(running.container.id))
            containers.push_back(std::move(running));
    }
    return containers;
}

SocketContainerEngines::SocketContainerEngines(std::vector<std::string> sockets)
    : sockets_(std::move(sockets)) {}

std::vector<std::string> SocketContainerEngines::usualSockets() {
    std::vector<std::string> sockets;
    constexpr std::string_view kUnix = "unix://";
    const char* named = std::getenv("DOCKER_HOST");
    if (named != nullptr && std::string_view(named).starts_with(kUnix))
        sockets.emplace_back(std::string_view(named).substr(kUnix.size()));
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && *runtime == '/') {
        sockets.push_back(std::string(runtime) + "/docker.sock");
        sockets.push_back(std::string(runtime) + "/podman/podman.sock");
    }
    for (const char* socket : {"/run/docker.sock", "/run/podman/podman.sock"})
        sockets.emplace_back(socket);
    return sockets;
}

std::vector<RunningContainer> SocketContainerEngines::runningContainers() const {
    std::vector<RunningContainer> all;
    for (const std::string& socket : sockets_) {
        std::vector<RunningContainer> containers = containersOf(socket);
        std::ranges::move(containers, std::back_inserter(all));
    }
    return all;
}

std::string SocketContainerEngines::stop(const Container& container) const {
    for (const std::string& socket : sockets_) {
        const std::vector<RunningContainer> containers = containersOf(socket);
        const bool isThere = std::ranges::any_of(containers, [&](const RunningContainer& running) {
            return running.container.id == container.id;
        });
        if (!isThere)
            continue;
        const Answer answer =
            ask(socket, "/containers/" + container.id + "/stop", Method::post, kPatienceWithTheEnd);
        if (answer.status == 204 || answer.status == 304)
            return {};
        const Json told = Json::parse(answer.text, nullptr, false);
        const std::string message = told.is_object() ? textOf(told, "message") : std::string();
        return message.empty() ? "the engine does not answer" : message;
    }
    return "no engine that you may ask knows the container";
}

} // namespace zenlot
