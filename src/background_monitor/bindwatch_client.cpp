#include "background_monitor/bindwatch_client.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <span>
#include <utility>

namespace zenlot {
namespace {

// Of a flood only a part at a time, so that everything else has its turn.
constexpr int kMostPacketsAtOnce = 64;
constexpr std::chrono::seconds kPauseAfterNonsense{60};

} // namespace

BindwatchClient::BindwatchClient(std::string path) : path_(std::move(path)) {}
BindwatchClient::~BindwatchClient() = default;

void BindwatchClient::start(Handlers handlers) {
    handlers_ = std::move(handlers);
    tryToConnect();
}

void BindwatchClient::tryToConnect() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socket_ || path_.empty() || path_.size() >= sizeof address.sun_path ||
        std::chrono::steady_clock::now() < notBefore_)
        return;
    std::memcpy(address.sun_path, path_.data(), path_.size());
    FileDescriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket ||
        ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return;
    socket_ = std::move(socket);
    notifier_ = std::make_unique<QSocketNotifier>(socket_.get(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { read(); });
}

void BindwatchClient::read() {
    std::array<std::byte, kLargestBindPacket> buffer;
    for (int packets = 0; packets < kMostPacketsAtOnce; ++packets) {
        const ssize_t length = ::recv(socket_.get(), buffer.data(), buffer.size(), MSG_TRUNC);
        if (length < 0 && (errno == EAGAIN || errno == EINTR))
            return;
        if (length <= 0) {
            disconnect();
            return;
        }
        const auto size = static_cast<std::size_t>(length);
        const auto packet =
            size <= buffer.size() ? decodeBindPacket(std::span(buffer).first(size)) : std::nullopt;
        if (!packet) {
            notBefore_ = std::chrono::steady_clock::now() + kPauseAfterNonsense;
            disconnect();
            return;
        }
        if (!std::exchange(isGreeted_, true))
            handlers_.came();
        handlers_.told(*packet);
    }
}

void BindwatchClient::disconnect() {
    // It is being called from there.
    notifier_->setEnabled(false);
    notifier_.release()->deleteLater();
    socket_ = FileDescriptor();
    if (std::exchange(isGreeted_, false))
        handlers_.went();
}

} // namespace zenlot
