#include "inventory/linux/tcp_socket_table.h"

#include "inventory/linux/proc_net_tcp.h"
#include "inventory/linux/sock_diag.h"
#include "inventory/linux/socket_sources.h"

namespace zenlot {

TcpSocketTable readTcpSockets(const ProcFiles& procFiles, NetlinkTransport& transport,
                              SocketScope scope, std::optional<std::uint16_t> port) {
    TcpSocketTable table;
    table.silentFamilies = appendBothFamilies(
        procFiles, table.sockets,
        [&](AddressFamily family) { return dumpTcpSockets(transport, family, scope, port); },
        [&](std::string_view text, AddressFamily family) {
            decodeProcNetTcp(text, family, scope, table.sockets);
        });
    if (port)
        std::erase_if(table.sockets, [port](const KernelTcpSocket& socket) {
            return socket.socket.localPort != *port;
        });
    return table;
}

} // namespace zenlot
