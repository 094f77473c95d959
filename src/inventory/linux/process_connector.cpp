#include "inventory/linux/process_connector.h"

#include <linux/cn_proc.h>
#include <linux/connector.h>
#include <linux/netlink.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>

namespace zenlot {
namespace {

// Of the kernel's list of events; headers before Linux 6.6 lack the last and the filter.
constexpr std::uint32_t kExec = 0x00000002;
constexpr std::uint32_t kExit = 0x80000000;
constexpr std::uint32_t kNonzeroExit = 0x20000000;

// Whoever waits for the descriptor has other things to do as well.
constexpr int kMostEventsAtOnce = 1024;

struct Subscription {
    nlmsghdr header;
    std::byte connector[sizeof(cn_msg)]; // which ends in an array without a length
    std::uint32_t operation;
    std::uint32_t eventFilter;
};
static_assert(sizeof(Subscription) == NLMSG_LENGTH(sizeof(cn_msg) + 8));

constexpr std::size_t kEventStart = NLMSG_HDRLEN + sizeof(cn_msg);
constexpr std::size_t kEventDataStart = kEventStart + offsetof(proc_event, event_data);

template <typename Value>
std::optional<Value> load(std::span<const std::byte> bytes, std::size_t offset) {
    if (bytes.size() < offset + sizeof(Value))
        return std::nullopt;
    Value value;
    std::memcpy(&value, bytes.data() + offset, sizeof value);
    return value;
}

FileDescriptor subscribe() {
    FileDescriptor descriptor(
        ::socket(AF_NETLINK, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_CONNECTOR));
    sockaddr_nl self{};
    self.nl_family = AF_NETLINK;
    self.nl_groups = CN_IDX_PROC;
    if (!descriptor ||
        ::bind(descriptor.get(), reinterpret_cast<const sockaddr*>(&self), sizeof self) != 0)
        return {};

    Subscription request{};
    request.header.nlmsg_len = sizeof request;
    request.header.nlmsg_type = NLMSG_DONE;
    cn_msg connector{};
    connector.id = {CN_IDX_PROC, CN_VAL_PROC};
    connector.len = sizeof request.operation + sizeof request.eventFilter;
    std::memcpy(request.connector, &connector, sizeof connector);
    request.operation = PROC_CN_MCAST_LISTEN;
    request.eventFilter = kExec | kNonzeroExit;
    sockaddr_nl kernel{};
    kernel.nl_family = AF_NETLINK;
    const ssize_t sent = ::sendto(descriptor.get(), &request, sizeof request, 0,
                                  reinterpret_cast<const sockaddr*>(&kernel), sizeof kernel);
    return sent == static_cast<ssize_t>(sizeof request) ? std::move(descriptor) : FileDescriptor();
}

} // namespace

std::optional<ProcessEvent> decodeProcessEvent(std::span<const std::byte> datagram) {
    struct Process {
        ProcessId thread;
        ProcessId process;
    };
    const auto kind = load<std::uint32_t>(datagram, kEventStart);
    const auto who = load<Process>(datagram, kEventDataStart);
    if (!kind || !who || who->thread != who->process)
        return std::nullopt;
    if (*kind == kExec)
        return ProcessEvent{ProcessEvent::Kind::exec, who->process, 0};
    const auto status = load<std::uint32_t>(datagram, kEventDataStart + sizeof(Process));
    if (*kind == kExit && status)
        return ProcessEvent{ProcessEvent::Kind::exit, who->process, static_cast<int>(*status)};
    return std::nullopt;
}

ProcessConnector::ProcessConnector() : socket_(subscribe()) {
    if (socket_ && !hearsOwnChild())
        socket_ = FileDescriptor();
}

bool ProcessConnector::read(const std::function<void(const ProcessEvent&)>& call) {
    bool isWhole = true;
    std::array<std::byte, 512> buffer;
    for (int count = 0; count < kMostEventsAtOnce; ++count) {
        sockaddr_nl sender{};
        socklen_t senderLength = sizeof sender;
        const ssize_t length = ::recvfrom(socket_.get(), buffer.data(), buffer.size(), 0,
                                          reinterpret_cast<sockaddr*>(&sender), &senderLength);
        if (length < 0 && errno == ENOBUFS)
            isWhole = false;
        else if (length <= 0 && errno != EINTR)
            return isWhole;
        else if (length > 0 && sender.nl_pid == 0) {
            if (const auto event =
                    decodeProcessEvent(std::span(buffer).first(static_cast<std::size_t>(length))))
                call(*event);
        }
    }
    return isWhole;
}

bool ProcessConnector::hearsOwnChild() {
    const ProcessId child = ::fork();
    if (child == 0)
        ::_exit(1);
    if (child < 0)
        return false;
    while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) {
    }
    using Clock = std::chrono::steady_clock;
    const Clock::time_point deadline = Clock::now() + std::chrono::milliseconds(100);
    bool heard = false;
    while (!heard && Clock::now() < deadline) {
        pollfd readable{socket_.get(), POLLIN, 0};
        if (::poll(&readable, 1, 20) > 0)
            read([&heard, child](const ProcessEvent& event) { heard |= event.pid == child; });
    }
    return heard;
}

} // namespace zenlot
