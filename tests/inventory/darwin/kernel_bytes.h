// Builds the kernel's records byte by byte. The offsets are written out here once more, so that a
// wrong layout of the decoders shows up.
#pragma once

#include <arpa/inet.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

namespace zenlot::test {

using Bytes = std::vector<std::byte>;
using Fields = std::vector<std::pair<std::size_t, std::uint32_t>>; // offset and value

// The rest is a pattern, as a field read from a wrong place must not look right. Fields that the
// size leaves no room for are left out.
inline Bytes record(std::size_t size, const Fields& fields) {
    Bytes bytes(size, std::byte{0xa5});
    for (const auto& [offset, value] : fields)
        if (offset + sizeof(value) <= size)
            std::memcpy(bytes.data() + offset, &value, sizeof(value));
    return bytes;
}

inline Bytes joined(const std::vector<Bytes>& parts) {
    Bytes all;
    for (const Bytes& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

inline Bytes tableHead(std::uint32_t length = 24) {
    return record(length, {{0, length}});
}

struct Entry {
    std::uint16_t localPort{0};
    std::uint32_t length{408};
    std::uint32_t family{30};
    std::uint32_t uid{502};
    std::uint16_t foreignPort{0};
};

inline Bytes tableEntry(const Entry& entry) {
    const std::uint32_t localPort = htons(entry.localPort);
    const std::uint32_t ports = localPort << 16 | htons(entry.foreignPort);
    return record(entry.length,
                  {{0, entry.length}, {20, ports}, {180, entry.family}, {252, entry.uid}});
}

inline Bytes descriptor(std::uint32_t number, std::uint32_t type = 2) {
    return record(8, {{0, number}, {4, type}});
}

struct Socket {
    std::uint16_t localPort{0};
    std::uint32_t family{2};
    std::uint32_t state{1};
    std::uint16_t foreignPort{0x1234};
    std::uint32_t kind{2};
};

inline Bytes socketInfo(const Socket& socket) {
    const std::uint32_t localPort = 0xa5a5'0000 | htons(socket.localPort); // the low half counts
    return record(792, {{184, socket.family},
                        {256, socket.kind},
                        {264, htons(socket.foreignPort)},
                        {268, localPort},
                        {344, socket.state}});
}

} // namespace zenlot::test
