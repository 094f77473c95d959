// Events as the kernel would tell them, and readers of what the service tells of them.
#pragma once

#include "bindwatch/bind_stream.h"
#include "posix/file_descriptor.h"

#include <sys/socket.h>
#include <sys/un.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
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

// None when nobody serves there.
inline FileDescriptor connectReader(const std::string& path, int flags = 0) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, path.size());
    FileDescriptor socket(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | flags, 0));
    return ::connect(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0
               ? std::move(socket)
               : FileDescriptor();
}

// None when the server has hung up, or has said nothing.
inline std::optional<BindPacket> readPacket(const FileDescriptor& reader) {
    std::array<std::byte, kLargestBindPacket> buffer;
    const ssize_t length = ::recv(reader.get(), buffer.data(), buffer.size(), 0);
    return length > 0 ? decodeBindPacket(std::span(buffer).first(static_cast<std::size_t>(length)))
                      : std::nullopt;
}

} // namespace zenlot
