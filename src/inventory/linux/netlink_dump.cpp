#include "inventory/linux/netlink_dump.h"

#include "posix/load.h"

#include <linux/netlink.h>

#include <algorithm>

namespace zenlot {
namespace {

constexpr int kDumpAttempts = 4;

enum class Progress : std::uint8_t {
    more, // the dump goes on in the next datagram
    done,
    failed,
};

// The kernel reports what went wrong within a dump, a missing protocol for one, in the message that
// ends it.
bool endsWithError(std::span<const std::byte> content) {
    return content.size() >= sizeof(int) && loadAt<int>(content) < 0;
}

Progress readDatagram(std::span<const std::byte> datagram, bool& wasInterrupted,
                      const NetlinkMessageReader& read) {
    while (datagram.size() >= sizeof(nlmsghdr)) {
        const auto header = loadAt<nlmsghdr>(datagram);
        if (header.nlmsg_len < NLMSG_HDRLEN || header.nlmsg_len > datagram.size())
            return Progress::failed;
        if ((header.nlmsg_flags & NLM_F_DUMP_INTR) != 0)
            wasInterrupted = true;
        const auto content = datagram.subspan(NLMSG_HDRLEN, header.nlmsg_len - NLMSG_HDRLEN);
        switch (header.nlmsg_type) {
        case NLMSG_DONE:
            return endsWithError(content) ? Progress::failed : Progress::done;
        case NLMSG_ERROR:
        case NLMSG_OVERRUN:
            return Progress::failed;
        case NLMSG_NOOP:
            break;
        default:
            if (!read(header.nlmsg_type, content))
                return Progress::failed;
        }
        datagram =
            datagram.subspan(std::min<std::size_t>(NLMSG_ALIGN(header.nlmsg_len), datagram.size()));
    }
    return datagram.empty() ? Progress::more : Progress::failed;
}

} // namespace

bool readNetlinkDump(NetlinkTransport& transport, std::span<const std::byte> request,
                     const std::function<void()>& begin, const NetlinkMessageReader& read) {
    for (int attempt = 0; attempt < kDumpAttempts; ++attempt) {
        begin();
        bool wasInterrupted = false;
        Progress progress = Progress::more;
        const bool answered = transport.dump(request, [&](std::span<const std::byte> datagram) {
            progress = readDatagram(datagram, wasInterrupted, read);
            return progress == Progress::more;
        });
        if (!answered || progress != Progress::done)
            return false;
        if (!wasInterrupted)
            break;
    }
    return true;
}

} // namespace zenlot
