#include "inventory/linux/kernel_tcp_socket.h"

#include <netinet/tcp.h>

namespace zenlot {

bool isInScope(SocketScope scope, TcpState state) {
    return scope == SocketScope::listening ? state == TcpState::listen
                                           : state != TcpState::timeWait;
}

TcpState tcpStateFromKernel(unsigned number) {
    switch (number) {
    case TCP_ESTABLISHED:
        return TcpState::established;
    case TCP_SYN_SENT:
        return TcpState::synSent;
    case TCP_SYN_RECV:
        return TcpState::synReceived;
    case TCP_FIN_WAIT1:
        return TcpState::finWait1;
    case TCP_FIN_WAIT2:
        return TcpState::finWait2;
    case TCP_TIME_WAIT:
        return TcpState::timeWait;
    case TCP_CLOSE:
        return TcpState::closed;
    case TCP_CLOSE_WAIT:
        return TcpState::closeWait;
    case TCP_LAST_ACK:
        return TcpState::lastAck;
    case TCP_LISTEN:
        return TcpState::listen;
    case TCP_CLOSING:
        return TcpState::closing;
    default:
        return TcpState::unknown;
    }
}

} // namespace zenlot
