// Tells at once when a process runs a new program and when one ends with an error: the kernel's
// process connector, with an event filter that keeps everything else away.
//
// Since Linux 6.6 every user may listen, in the initial user, process and network namespaces.
// Elsewhere the kernel refuses, or silently sends nothing or too much; isOpen() is true only after
// an event that this program caused itself has come through.
//
//     ProcessConnector connector;
//     if (connector.isOpen())
//         // whenever connector.descriptor() is readable:
//         connector.read([](const ProcessEvent& event) { ... });
#pragma once

#include "inventory/process_tables.h"
#include "posix/file_descriptor.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace zenlot {

struct ProcessEvent {
    enum class Kind : std::uint8_t { exec, exit };

    Kind kind{Kind::exec};
    ProcessId pid{0};
    int waitStatus{0}; // of an exit, as wait() reports it

    friend bool operator==(const ProcessEvent&, const ProcessEvent&) = default;
};

// None for events of other kinds, for threads, and for what makes no sense.
std::optional<ProcessEvent> decodeProcessEvent(std::span<const std::byte> datagram);

class ProcessConnector {
  public:
    // Takes up to a tenth of a second where the kernel refuses in silence.
    ProcessConnector();

    bool isOpen() const { return static_cast<bool>(socket_); }
    int descriptor() const { return socket_.get(); }

    // Hands over what has come, without waiting; of a flood only a part, and the descriptor is then
    // still readable. False when the kernel had to drop events; those after them come as before.
    bool read(const std::function<void(const ProcessEvent&)>& call);

  private:
    bool hearsOwnChild();

    FileDescriptor socket_;
};

} // namespace zenlot
