// Datagrams as the kernel's socket diagnostics send them.
#pragma once

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/tcp.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace zenlot {

using Datagram = std::vector<std::byte>;

inline void appendMessage(Datagram& datagram, std::uint16_t type, std::uint16_t flags,
                          std::span<const std::byte> payload) {
    nlmsghdr header{};
    header.nlmsg_len = static_cast<std::uint32_t>(NLMSG_LENGTH(payload.size()));
    header.nlmsg_type = type;
    header.nlmsg_flags = flags;
    const std::size_t start = datagram.size();
    datagram.resize(start + NLMSG_ALIGN(header.nlmsg_len));
    std::memcpy(datagram.data() + start, &header, sizeof header);
    std::memcpy(datagram.data() + start + NLMSG_HDRLEN, payload.data(), payload.size());
}

inline void appendSocket(Datagram& datagram, std::uint8_t family, std::uint16_t port,
                         std::uint32_t inode, std::uint32_t uid,
                         std::uint16_t flags = NLM_F_MULTI) {
    inet_diag_msg message{};
    message.idiag_family = family;
    message.idiag_state = TCP_LISTEN;
    message.id.idiag_sport = htons(port);
    message.idiag_inode = inode;
    message.idiag_uid = uid;
    appendMessage(datagram, SOCK_DIAG_BY_FAMILY, flags, std::as_bytes(std::span(&message, 1)));
}

inline void appendEnd(Datagram& datagram, std::uint16_t type = NLMSG_DONE,
                      std::uint16_t flags = NLM_F_MULTI) {
    const std::int32_t status = 0;
    appendMessage(datagram, type, flags, std::as_bytes(std::span(&status, 1)));
}

} // namespace zenlot
