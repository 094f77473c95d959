#include "inventory/linux/listening_socket_reader.h"

#include "inventory/linux/proc_net_tcp.h"
#include "inventory/linux/sock_diag.h"
#include "inventory/linux/socket_sources.h"

namespace zenlot {

std::vector<ListeningSocket> readListeningSockets(const ProcFiles& procFiles,
                                                  NetlinkTransport& transport,
                                                  std::optional<std::uint16_t> port) {
    std::vector<ListeningSocket> sockets;
    appendBothFamilies(
        procFiles, sockets,
        [&](AddressFamily family) { return dumpListeningSockets(transport, family, port); },
        [&](std::string_view text, AddressFamily family) {
            decodeProcNetTcp(text, family, sockets);
        });
    if (port)
        std::erase_if(sockets,
                      [port](const ListeningSocket& socket) { return socket.port != *port; });
    return sockets;
}

} // namespace zenlot
