// Makes a netlink dump and walks over its messages, whatever they are about. The one place that
// knows how a dump ends: well, with an error, or with a table that changed meanwhile.
#pragma once

#include "inventory/linux/netlink_transport.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

namespace zenlot {

// Looks at the type and the content of one message; false for a content that makes no sense, which
// fails the dump. The content is aligned to nothing.
using NetlinkMessageReader =
    std::function<bool(std::uint16_t type, std::span<const std::byte> content)>;

// Whether the dump is whole. False when the kernel refused it, broke it off or fell silent, and
// when what it sent makes no sense; the messages until then count for nothing.
//
// `begin` is called before the first message. A dump during which the table changed is made again,
// after another call of `begin`, a few times; the last attempt then stands as it is, since a table
// that never rests has no consistent picture.
bool readNetlinkDump(NetlinkTransport& transport, std::span<const std::byte> request,
                     const std::function<void()>& begin, const NetlinkMessageReader& read);

} // namespace zenlot
