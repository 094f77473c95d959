// Decodes /proc/net/tcp and /proc/net/tcp6, the text form of the kernel's TCP table. It is slower
// than the socket diagnostics, but every kernel has it.
#pragma once

#include "inventory/linux/kernel_tcp_socket.h"
#include "inventory/listening_socket.h"

#include <string_view>
#include <vector>

namespace zenlot {

// Appends the sockets in scope, in the order of the lines. The heading and lines that make no
// sense are skipped.
void decodeProcNetTcp(std::string_view text, AddressFamily family, SocketScope scope,
                      std::vector<KernelTcpSocket>& sockets);

// The same of those that listen, with their addresses; the file tells nothing of their control
// groups and options.
void decodeProcNetTcp(std::string_view text, AddressFamily family,
                      std::vector<ListeningSocket>& sockets);

} // namespace zenlot
