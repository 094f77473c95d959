#include "inventory/linux/tcp_socket_table.h"

#include "inventory/linux/proc_net_tcp.h"
#include "inventory/linux/sock_diag.h"

#include <algorithm>
#include <iterator>

namespace zenlot {

std::vector<KernelTcpSocket> readTcpSockets(const ProcFiles& procFiles, NetlinkTransport& transport,
                                            SocketScope scope, std::optional<std::uint16_t> port) {
    struct Source {
        AddressFamily family;
        const char* file;
    };
    std::vector<KernelTcpSocket> all;
    for (const Source& source :
         {Source{AddressFamily::ipv4, "net/tcp"}, Source{AddressFamily::ipv6, "net/tcp6"}}) {
        if (auto sockets = dumpTcpSockets(transport, source.family, scope, port)) {
            std::ranges::move(*sockets, std::back_inserter(all));
        } else if (const auto text = procFiles.read(source.file)) {
            decodeProcNetTcp(*text, source.family, scope, all);
        }
    }
    if (port)
        std::erase_if(all, [port](const KernelTcpSocket& socket) {
            return socket.socket.localPort != *port;
        });
    return all;
}

} // namespace zenlot
