// Tells whether a port is taken by trying to take it.
#pragma once

#include "inventory/process_tables.h"

#include <cstdint>
#include <functional>

namespace zenlot {

// True only when binding the wildcard address of the family to the port fails because the address
// is in use. Every other failure, such as a low port that the user may not bind, counts as free.
// The socket is closed before the function returns. Any thread may call it.
bool isPortInUse(std::uint16_t port, AddressFamily family);

// The same question as a value, for those who are handed the answer.
using BindProbe = std::function<bool(std::uint16_t port, AddressFamily family)>;

} // namespace zenlot
