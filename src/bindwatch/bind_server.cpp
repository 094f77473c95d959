#include "bindwatch/bind_server.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <optional>
#include <utility>

namespace zenlot {
namespace {

constexpr int kWaiting = 16; // readers that have not been welcomed yet
constexpr mode_t kForEverybody = 0666;

std::optional<sockaddr_un> addressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path)
        return std::nullopt;
    std::memcpy(address.sun_path, path.data(), path.size());
    return address;
}

FileDescriptor makeSocket() {
    return FileDescriptor(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

} // namespace

FileDescriptor listenForReaders(const std::string& path) {
    const auto address = addressOf(path);
    FileDescriptor socket = makeSocket();
    if (!address || !socket)
        return {};
    const auto* generic = reinterpret_cast<const sockaddr*>(&*address);
    if (::bind(socket.get(), generic, sizeof *address) != 0) {
        // One that a program left which was killed has nobody behind it.
        struct stat status {};
        if (errno != EADDRINUSE || ::lstat(path.c_str(), &status) != 0 ||
            !S_ISSOCK(status.st_mode) ||
            ::connect(makeSocket().get(), generic, sizeof *address) == 0 || errno != ECONNREFUSED ||
            ::unlink(path.c_str()) != 0 || ::bind(socket.get(), generic, sizeof *address) != 0)
            return {};
    }
    if (::chmod(path.c_str(), kForEverybody) != 0 || ::listen(socket.get(), kWaiting) != 0)
        return {};
    return socket;
}

BindServer::BindServer(BindSource& source, FileDescriptor listener)
    : source_(source), listener_(std::move(listener)) {}

BindServer::~BindServer() {
    if (takesNote_)
        source_.stop();
}

bool BindServer::serve(std::chrono::milliseconds patience, int stop) {
    std::vector<pollfd> waits{{stop, POLLIN, 0},
                              {listener_.get(), POLLIN, 0},
                              {takesNote_ ? source_.descriptor() : -1, POLLIN, 0}};
    for (const Reader& reader : readers_) {
        const auto events = static_cast<short>(reader.queue.isEmpty() ? POLLIN : POLLIN | POLLOUT);
        waits.push_back({reader.socket.get(), events, 0});
    }
    const auto timeout = static_cast<int>(patience.count());
    if (::poll(waits.data(), static_cast<nfds_t>(waits.size()), timeout) < 0)
        return errno == EINTR;
    if (waits[0].revents != 0)
        return false;
    if (waits[2].revents != 0)
        source_.read([this](const BindEvent& event) { tell(event); });
    for (std::size_t place = 0; place < readers_.size(); ++place) {
        Reader& reader = readers_[place];
        // Readers have nothing to say; one that speaks, or is gone, is done with.
        reader.hasLeft |= (waits[3 + place].revents & ~POLLOUT) != 0;
        send(reader);
    }
    if (waits[1].revents != 0)
        welcome();
    dismiss();
    return true;
}

void BindServer::welcome() {
    FileDescriptor socket(
        ::accept4(listener_.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    ucred who{};
    socklen_t length = sizeof who;
    if (!socket || ::getsockopt(socket.get(), SOL_SOCKET, SO_PEERCRED, &who, &length) != 0)
        return;
    const auto ofUser = std::ranges::count(readers_, who.uid, &Reader::user);
    if (readers_.size() >= kMostReaders || std::cmp_greater_equal(ofUser, kMostReadersOfUser))
        return;
    if (!takesNote_ && !source_.start()) {
        source_.stop();
        return;
    }
    takesNote_ = true;
    if (ofUser == 0 && !source_.follow(who.uid))
        return;
    Reader reader;
    reader.socket = std::move(socket);
    reader.user = who.uid;
    reader.lostBefore = source_.lostOf(who.uid);
    readers_.push_back(std::move(reader));
    send(readers_.back());
}

void BindServer::tell(const BindEvent& event) {
    const PeerQueue::Time now = std::chrono::steady_clock::now();
    for (Reader& reader : readers_) {
        if (reader.user != event.user)
            continue;
        reader.queue.push(event, now);
        if (!reader.queue.isGivenUp(now))
            continue;
        reader.hasLeft = true;
        ++givenUp_;
        std::fprintf(stderr,
                     "zenlot-bindwatch: gave up a reader of user %u that took nothing: %ju lost\n",
                     reader.user, static_cast<std::uintmax_t>(reader.queue.lost()));
    }
}

void BindServer::send(Reader& reader) {
    while (!reader.hasLeft && !reader.queue.isEmpty()) {
        // The count starts anew when the kernel has forgotten a user for lack of room.
        const std::uint64_t lost = source_.lostOf(reader.user);
        const std::vector<std::byte> packet =
            reader.queue.nextPacket(lost - std::min(lost, reader.lostBefore));
        if (::send(reader.socket.get(), packet.data(), packet.size(), MSG_NOSIGNAL) < 0) {
            reader.hasLeft = errno != EAGAIN && errno != EINTR && errno != ENOBUFS;
            return;
        }
        reader.queue.dropPacket();
    }
}

void BindServer::dismiss() {
    const auto leaving = std::stable_partition(
        readers_.begin(), readers_.end(), [](const Reader& reader) { return !reader.hasLeft; });
    const std::vector<Reader> left(std::make_move_iterator(leaving),
                                   std::make_move_iterator(readers_.end()));
    readers_.erase(leaving, readers_.end());
    for (const Reader& reader : left) {
        if (std::ranges::count(readers_, reader.user, &Reader::user) == 0)
            source_.unfollow(reader.user);
    }
    if (takesNote_ && readers_.empty()) {
        source_.stop();
        takesNote_ = false;
    }
}

} // namespace zenlot
