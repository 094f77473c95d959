// A TCP socket of a process, as it is shown.
#pragma once

#include "inventory/uuid.h"

#include <QString>

namespace zenlot {

struct NetworkConnection {
    Uuid id;        // fresh for every record; it only tells rows apart
    QString proto;  // "TCP4" or "TCP6"
    QString local;  // "*:" and the port
    QString remote; // the same; empty for a socket without a peer
    QString state;  // such as "ESTABLISHED"

    friend bool operator==(const NetworkConnection&, const NetworkConnection&) = default;
};

} // namespace zenlot
