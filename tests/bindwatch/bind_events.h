// Events as the kernel would tell them.
#pragma once

#include "bindwatch/bind_stream.h"

#include <cstdint>
#include <cstring>
#include <string_view>

namespace zenlot {

inline BindEvent bindEvent(BindKind kind, std::uint32_t process, std::uint16_t port,
                           std::uint64_t milliseconds = 0) {
    BindEvent event{};
    event.kind = static_cast<std::uint8_t>(kind);
    event.process = event.thread = process;
    event.process_started_at = std::uint64_t{process} * 1000;
    event.parent = 1;
    event.user = 1000;
    event.port = port;
    event.family = kind == ZENLOT_PROCESS_ENDED ? 0 : 4;
    event.happened_at = milliseconds * 1'000'000;
    event.network_inode = 7;
    constexpr std::string_view kName = "node";
    std::memcpy(event.command, kName.data(), kName.size());
    return event;
}

} // namespace zenlot
