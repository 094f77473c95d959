// A real listening socket on a port that the kernel chose.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <stdexcept>

namespace zenlot {

class Listener {
  public:
    explicit Listener(int family = AF_INET, int protocol = 0)
        : descriptor_(::socket(family, SOCK_STREAM | SOCK_CLOEXEC, protocol)) {
        sockaddr_in6 address{}; // an IPv4 address fits into it
        socklen_t length = family == AF_INET6 ? sizeof(sockaddr_in6) : sizeof(sockaddr_in);
        auto* generic = reinterpret_cast<sockaddr*>(&address);
        generic->sa_family = static_cast<sa_family_t>(family);
        if (family == AF_INET6)
            address.sin6_addr = in6addr_loopback;
        else
            reinterpret_cast<sockaddr_in*>(&address)->sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (descriptor_ < 0 || ::bind(descriptor_, generic, length) != 0 ||
            ::listen(descriptor_, 8) != 0 || ::getsockname(descriptor_, generic, &length) != 0) {
            ::close(descriptor_);
            throw std::runtime_error("can't listen");
        }
        port_ = ntohs(address.sin6_port); // at the same place in both families
    }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() { ::close(descriptor_); }

    std::uint16_t port() const { return port_; }
    int descriptor() const { return descriptor_; }

  private:
    int descriptor_;
    std::uint16_t port_{0};
};

// In a process of its own, whose listeners they are until it ends, whatever it runs.
inline bool listenOften(int count) {
    const rlimit limit{static_cast<rlim_t>(count) + 100, static_cast<rlim_t>(count) + 100};
    if (::setrlimit(RLIMIT_NOFILE, &limit) != 0)
        return false;
    for (int made = 0; made < count; ++made) {
        const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
            ::listen(listener, 1) != 0)
            return false;
    }
    return true;
}

} // namespace zenlot
