#include "bindwatch/bind_stream.h"

#include "posix/load.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace zenlot {
namespace {

constexpr std::uint32_t kMagic = 0x444e425a; // "ZBND"
constexpr std::uint16_t kVersion = 1;

struct PacketHead {
    std::uint32_t magic{kMagic};
    std::uint16_t version{kVersion};
    std::uint16_t recordSize{sizeof(BindEvent)};
    std::uint32_t count{0};
    std::uint32_t reserved{0};
    std::uint64_t lost{0};
};
static_assert(sizeof(PacketHead) == 24);

bool isKnown(const BindEvent& event) {
    return event.kind >= ZENLOT_BIND_REFUSED && event.kind <= ZENLOT_PROCESS_ENDED;
}

bool makesSense(const BindEvent& event) {
    const bool hasAddress = event.kind != ZENLOT_PROCESS_ENDED;
    return event.process != 0 &&
           (hasAddress ? event.family == 4 || event.family == 6 : event.family == 0);
}

} // namespace

std::vector<std::byte> encodeBindPacket(std::uint64_t lost, std::span<const BindEvent> events) {
    events = events.first(std::min(events.size(), kMostEventsOfPacket));
    PacketHead head;
    head.count = static_cast<std::uint32_t>(events.size());
    head.lost = lost;
    std::vector<std::byte> bytes(sizeof head + events.size_bytes());
    std::memcpy(bytes.data(), &head, sizeof head);
    if (!events.empty())
        std::memcpy(bytes.data() + sizeof head, events.data(), events.size_bytes());
    return bytes;
}

std::optional<BindPacket> decodeBindPacket(std::span<const std::byte> bytes) {
    if (bytes.size() < sizeof(PacketHead))
        return std::nullopt;
    const auto head = loadAt<PacketHead>(bytes);
    if (head.magic != kMagic || head.version != kVersion || head.recordSize < sizeof(BindEvent) ||
        head.count > kMostEventsOfPacket ||
        bytes.size() != sizeof head + std::size_t{head.count} * head.recordSize)
        return std::nullopt;
    BindPacket packet;
    packet.lost = head.lost;
    for (std::size_t place = 0; place < head.count; ++place) {
        auto event = loadAt<BindEvent>(bytes, sizeof head + place * head.recordSize);
        if (!isKnown(event))
            continue;
        if (!makesSense(event))
            return std::nullopt;
        event.command[ZENLOT_COMMAND_LENGTH - 1] = '\0';
        packet.events.push_back(event);
    }
    return packet;
}

std::string_view commandOf(const BindEvent& event) {
    return {std::begin(event.command), std::ranges::find(event.command, '\0')};
}

} // namespace zenlot
