// What goes over the socket of zenlot-bindwatch: packets, each with some events and the count of
// those that this reader never got. Both ends are on one machine, so numbers have its byte order.
//
// The first packet is empty; it says that everything which happens from now on is told. A later
// version may append fields to the records and add kinds of events; readers take the fields and
// kinds that they know.
#pragma once

#include "bindwatch/bind_event.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace zenlot {

struct BindPacket {
    std::uint64_t lost{0}; // since the reader came
    std::vector<BindEvent> events;
};

inline constexpr std::size_t kMostEventsOfPacket = 64;
// Room for records of later versions as well.
inline constexpr std::size_t kLargestBindPacket = std::size_t{32} * 1024;

// Of more events the first ones that a packet may hold.
std::vector<std::byte> encodeBindPacket(std::uint64_t lost, std::span<const BindEvent> events);

// None for what is no packet, or one of another protocol.
std::optional<BindPacket> decodeBindPacket(std::span<const std::byte> bytes);

// Its text, as far as it goes.
std::string_view commandOf(const BindEvent& event);

} // namespace zenlot
