#include "inventory/linux/netlink_transport.h"

#include <linux/netlink.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <array>
#include <cerrno>

namespace zenlot {
namespace {

// The kernel answers a dump within the call that asks for it; this only keeps a broken one from
// holding a scan for ever.
constexpr timeval kSilence{2, 0};

// The kernel fills datagrams up to the size of the reader's buffer, to 32 KiB at the most.
constexpr std::size_t kDatagramBytes = std::size_t{32} * 1024;

} // namespace

bool SockDiagTransport::dump(std::span<const std::byte> request, const Consumer& consume) {
    const FileDescriptor descriptor(
        ::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC, NETLINK_SOCK_DIAG));
    if (!descriptor)
        return false;
    ::setsockopt(descriptor.get(), SOL_SOCKET, SO_RCVTIMEO, &kSilence, sizeof kSilence);

    sockaddr_nl kernel{};
    kernel.nl_family = AF_NETLINK;
    const ssize_t sent = ::sendto(descriptor.get(), request.data(), request.size(), 0,
                                  reinterpret_cast<const sockaddr*>(&kernel), sizeof kernel);
    if (sent != static_cast<ssize_t>(request.size()))
        return false;

    std::array<std::byte, kDatagramBytes> buffer;
    for (;;) {
        sockaddr_nl sender{};
        socklen_t senderLength = sizeof sender;
        const ssize_t length = ::recvfrom(descriptor.get(), buffer.data(), buffer.size(), MSG_TRUNC,
                                          reinterpret_cast<sockaddr*>(&sender), &senderLength);
        if (length < 0 && errno == EINTR)
            continue;
        if (length <= 0 || static_cast<std::size_t>(length) > buffer.size())
            return false;
        // Any process may send to a netlink socket; only port 0 is the kernel.
        if (sender.nl_pid != 0)
            continue;
        if (!consume(std::span(buffer).first(static_cast<std::size_t>(length))))
            return true;
    }
}

} // namespace zenlot
