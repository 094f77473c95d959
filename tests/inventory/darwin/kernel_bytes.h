// Builds the kernel's records byte by byte. The offsets are written out here once more, so that a
// wrong layout of the decoders shows up.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace zenlot::test {

using Bytes = std::vector<std::byte>;

static_assert(std::endian::native == std::endian::little, "the records are built little-endian");

template <typename Value>
void put(Bytes& bytes, std::size_t offset, Value value) {
    std::memcpy(bytes.data() + offset, &value, sizeof(value));
}

inline void putPort(Bytes& bytes, std::size_t offset, std::uint16_t port) {
    put(bytes, offset, static_cast<std::uint8_t>(port >> 8));
    put(bytes, offset + 1, static_cast<std::uint8_t>(port & 0xff));
}

inline Bytes joined(const std::vector<Bytes>& parts) {
    Bytes all;
    for (const Bytes& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

inline Bytes tableHead(std::uint32_t length = 24) {
    Bytes head(length);
    put(head, 0, length);
    return head;
}

struct Entry {
    std::uint16_t localPort{0};
    std::uint32_t length{408};
    std::uint32_t family{30};
    std::uint32_t uid{502};
    std::uint16_t foreignPort{0};
};

// Fields that the length leaves no room for are left out.
inline Bytes tableEntry(const Entry& entry) {
    Bytes bytes(std::max<std::size_t>(entry.length, 256));
    put(bytes, 0, entry.length);
    putPort(bytes, 20, entry.foreignPort);
    putPort(bytes, 22, entry.localPort);
    put(bytes, 180, entry.family);
    put(bytes, 252, entry.uid);
    bytes.resize(entry.length);
    return bytes;
}

inline Bytes descriptor(std::int32_t number, std::uint32_t type = 2) {
    Bytes bytes(8);
    put(bytes, 0, number);
    put(bytes, 4, type);
    return bytes;
}

struct Socket {
    std::uint16_t localPort{0};
    std::int32_t family{2};
    std::int32_t state{1};
    std::uint16_t foreignPort{0};
    std::int32_t kind{2};
};

// What is not set is filled with a pattern, as a field read from a wrong place must not look right.
inline Bytes socketInfo(const Socket& socket) {
    Bytes bytes(792, std::byte{0xa5});
    put(bytes, 184, socket.family);
    put(bytes, 256, socket.kind);
    putPort(bytes, 264, socket.foreignPort);
    putPort(bytes, 268, socket.localPort);
    put(bytes, 344, socket.state);
    return bytes;
}

inline Bytes bsdInfo(std::uint32_t effectiveUid, std::uint32_t realUid) {
    Bytes bytes(136, std::byte{0xa5});
    put(bytes, 20, effectiveUid);
    put(bytes, 28, realUid);
    return bytes;
}

inline Bytes processRecord(std::int32_t pid) {
    Bytes bytes(648, std::byte{0xa5});
    put(bytes, 40, pid);
    return bytes;
}

} // namespace zenlot::test
