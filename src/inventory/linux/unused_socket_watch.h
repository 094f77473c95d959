// Tells the moment in which a TCP socket dies that never had a peer: that of a listener, and one
// that never got an address, which is the only trace that a failed bind() leaves.
//
// A server whose port is taken makes a socket, is refused the port, and closes the socket. The
// kernel announces the end of every socket to those who ask (the group that `ss --events` listens
// to), without privileges and for all processes of the network namespace. A socket that was bound
// still has its local port then; one whose bind() failed has none. A filter in the kernel keeps the
// sockets of connections away, so a busy machine does not wake the program. Which process the
// socket belonged to is not told.
//
// A connection that found no route leaves such a socket as well. Over IPv6 it keeps its
// destination, and comes as failedConnection; over IPv4 it does not, see FailedConnections.
//
// A program that asks a name server for an address uses a UDP socket, whose end comes as
// nameQuestion: who makes its TCP socket first and asks then, drops it unused when there is no such
// name.
//
// Some programs make a socket and drop it at once to learn whether the machine has a protocol. The
// Go runtime does so before its first use of the network, and then binds two more sockets to IPv6
// loopback addresses; those come as addressProbe, so that the unbound one before can be discounted.
//
//     UnusedSocketWatch watch;
//     // whenever watch.descriptor() is readable:
//     watch.read([](UnusedSocket socket) { ... });
#pragma once

#include "inventory/process_tables.h"
#include "posix/file_descriptor.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace zenlot {

struct UnusedSocket {
    enum class Kind : std::uint8_t {
        unbound,
        failedConnection, // found no route; the family is that of its destination
        addressProbe,     // was bound to ::1 on a port of the kernel's choice, and nothing else
        bound,            // to any other address and port: mostly a socket that was listened on
        nameQuestion,     // a UDP socket that asked a name server
    };

    Kind kind{Kind::unbound};
    AddressFamily family{AddressFamily::ipv4};
    std::uint16_t port{0}; // that it was bound to; 0 for none

    friend bool operator==(const UnusedSocket&, const UnusedSocket&) = default;
};

// None for TCP sockets that had a peer, for other UDP sockets, and for what makes no sense.
std::optional<UnusedSocket> decodeUnusedSocket(std::span<const std::byte> datagram);

class UnusedSocketWatch {
  public:
    UnusedSocketWatch();

    // To wait on for reading; -1 where the kernel does not tell.
    int descriptor() const { return socket_.get(); }

    // Hands over what has come, without waiting; of a flood only a part, and the descriptor is then
    // still readable.
    void read(const std::function<void(UnusedSocket)>& call);

  private:
    FileDescriptor socket_;
};

} // namespace zenlot
