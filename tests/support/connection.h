// A connection to a listener, with both of its ends.
#pragma once

#include "support/listener.h"

#include <stdexcept>

namespace zenlot {

class Connection {
  public:
    // The listener must be one of IPv4.
    explicit Connection(const Listener& listener)
        : client_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(listener.port());
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* generic = reinterpret_cast<sockaddr*>(&address);
        socklen_t length = sizeof address;
        if (::connect(client_, generic, length) == 0)
            server_ = ::accept4(listener.descriptor(), nullptr, nullptr, SOCK_CLOEXEC);
        if (server_ < 0 || ::getsockname(client_, generic, &length) != 0) {
            ::close(client_);
            closeServerSide();
            throw std::runtime_error("can't connect");
        }
        clientPort_ = ntohs(address.sin_port);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        closeServerSide();
        ::close(client_);
    }

    std::uint16_t clientPort() const { return clientPort_; }

    void closeServerSide() {
        ::close(server_);
        server_ = -1;
    }

  private:
    int client_;
    int server_{-1};
    std::uint16_t clientPort_{0};
};

} // namespace zenlot
