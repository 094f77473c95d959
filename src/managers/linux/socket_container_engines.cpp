#include "managers/linux/socket_container_engines.h"

#include "inventory/process_names.h"
#include "posix/file_descriptor.h"

#include <nlohmann/json.hpp>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <iterator>
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
    int status{0}; // 0 when there was none
    std::string text;
};

enum class Method : std::uint8_t { get, post };

FileDescriptor connectedTo(const std::string& socket) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socket.size() >= sizeof address.sun_path)
        return {};
    std::ranges::copy(socket, address.sun_path);
    FileDescriptor connection(::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
    if (!connection || ::connect(connection.get(), reinterpret_cast<const sockaddr*>(&address),
                                 sizeof address) != 0)
        return {};
    return connection;
}

// The first version of the protocol ends an answer with the connection, and knows no pieces. What
// is asked is shorter than any socket's buffer.
Answer ask(const std::string& socket, const std::string& path, Method method,
           std::chrono::milliseconds patience) {
    Answer answer;
    const FileDescriptor connection = connectedTo(socket);
    const std::string question = (method == Method::post ? "POST " : "GET ") + path +
                                 " HTTP/1.0\r\nHost: localhost\r\nContent-Length: 0\r\n\r\n";
    if (!connection || ::send(connection.get(), question.data(), question.size(), MSG_NOSIGNAL) !=
                           static_cast<ssize_t>(question.size()))
        return answer;
    std::string text;
    std::array<char, std::size_t{16} * 1024> buffer;
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (text.size() < kLargestAnswer) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd readable{connection.get(), POLLIN, 0};
        if (left.count() <= 0 || ::poll(&readable, 1, static_cast<int>(left.count())) <= 0)
            return answer;
        const ssize_t length = ::read(connection.get(), buffer.data(), buffer.size());
        if (length < 0 && (errno == EINTR || errno == EAGAIN))
            continue;
        if (length < 0)
            return answer;
        if (length == 0)
            break;
        text.append(buffer.data(), static_cast<std::size_t>(length));
    }
    constexpr std::string_view kEndOfHead = "\r\n\r\n";
    const std::size_t head = text.find(kEndOfHead);
    const std::size_t status = text.find(' ');
    if (!text.starts_with("HTTP/1.") || head == std::string::npos || status > head)
        return answer;
    std::from_chars(text.data() + status + 1, text.data() + head, answer.status);
    answer.text = text.substr(head + kEndOfHead.size());
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
