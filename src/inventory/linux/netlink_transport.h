// Carries one netlink dump: a request out, the datagrams of the answer in.
#pragma once

#include "posix/file_descriptor.h"

#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace zenlot {

class NetlinkTransport {
  public:
    // Looks at one datagram; false ends the dump.
    using Consumer = std::function<bool(std::span<const std::byte> datagram)>;

    NetlinkTransport() = default;
    NetlinkTransport(const NetlinkTransport&) = delete;
    NetlinkTransport& operator=(const NetlinkTransport&) = delete;
    virtual ~NetlinkTransport() = default;

    // Sends the request and hands over datagrams until the consumer has had enough. False when the
    // request could not be sent, or the kernel fell silent before the consumer was done.
    virtual bool dump(std::span<const std::byte> request, const Consumer& consume) = 0;
};

// The kernel's socket diagnostics. Each dump opens a socket of its own, so that what an earlier
// dump left unread can't be mistaken for an answer.
class SockDiagTransport final : public NetlinkTransport {
  public:
    bool dump(std::span<const std::byte> request, const Consumer& consume) override;
};

} // namespace zenlot
