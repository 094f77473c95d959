// Tells each reader of a Unix socket the events of its own user and nobody else's; who a reader is
// says the kernel. Everything is bounded: readers, readers of one user, and what waits for each.
//
// Takes note of nothing while nobody reads.
//
//     BindServer server(source, listenForReaders(path));
//     while (goesOn) server.serve(-1ms, {stop.get()});
#pragma once

#include "bindwatch/bind_source.h"
#include "bindwatch/peer_queue.h"
#include "posix/file_descriptor.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zenlot {

// A socket that everybody may connect to. A path that another program serves is left alone; none
// then, and when the path can't be had.
FileDescriptor listenForReaders(const std::string& path);

class BindServer {
  public:
    static constexpr std::size_t kMostReaders = 64;
    static constexpr std::size_t kMostReadersOfUser = 4;

    // `source` must outlive the server.
    BindServer(BindSource& source, FileDescriptor listener);
    ~BindServer();
    BindServer(const BindServer&) = delete;
    BindServer& operator=(const BindServer&) = delete;

    // Waits until there is something to do, or `stop` is readable, for `patience` at the most (less
    // than none: without end), and does it. False when it was `stop`.
    bool serve(std::chrono::milliseconds patience, int stop = -1);

    std::size_t readers() const { return readers_.size(); }

    // Of readers that took nothing for too long.
    std::uint64_t givenUp() const { return givenUp_; }

  private:
    struct Reader {
        FileDescriptor socket;
        std::uint32_t user{0};
        std::uint64_t lostBefore{0}; // what the source had lost when it came
        PeerQueue queue;
        bool hasLeft{false};
    };

    void welcome();
    void tell(const BindEvent& event);
    void send(Reader& reader);
    void dismiss();

    BindSource& source_;
    FileDescriptor listener_;
    std::vector<Reader> readers_;
    std::uint64_t givenUp_{0};
    bool takesNote_{false};
};

} // namespace zenlot
