// Whom a listening socket lets in, and how its address is written.
#pragma once

#include "inventory/origin/origin.h"

#include <span>
#include <string>

namespace zenlot {

// 127.0.0.0/8 and ::1, also in IPv6 dress.
bool isLoopback(const IpAddress& address);

Reach reachOf(std::span<const ListeningSocket> sockets);

// "127.0.0.1", "::1"; no brackets.
std::string addressText(const IpAddress& address);

} // namespace zenlot
