#include "inventory/bind_probe.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>

namespace zenlot {
namespace {

// A child that another thread starts meanwhile must not inherit the port.
#ifdef SOCK_CLOEXEC
constexpr int kSocketType = SOCK_STREAM | SOCK_CLOEXEC;
#else
constexpr int kSocketType = SOCK_STREAM;
#endif

template <typename Address>
int bindTo(int descriptor, const Address& address) {
    return ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

} // namespace

// No socket option is set: SO_REUSEADDR would let the bind succeed where a server's would not.
bool isPortInUse(std::uint16_t port, AddressFamily family) {
    const bool ipv6 = family == AddressFamily::ipv6;
    const int descriptor = ::socket(ipv6 ? AF_INET6 : AF_INET, kSocketType, 0);
    if (descriptor < 0)
        return false;

    int result = 0;
    errno = 0;
    if (ipv6) {
        sockaddr_in6 address{};
        address.sin6_family = AF_INET6;
        address.sin6_port = htons(port);
        result = bindTo(descriptor, address);
    } else {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        result = bindTo(descriptor, address);
    }
    const int error = errno;
    ::close(descriptor);
    return result != 0 && error == EADDRINUSE;
}

} // namespace zenlot
