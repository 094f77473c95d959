// Reads what zenlot-bindwatch tells of the user's processes. It is an option of the machine: where
// it is not there, or goes away, nothing more is said than that.
//
// Everything belongs to the main thread, and nothing waits.
//
//     BindwatchClient client("/run/zenlot/binds");
//     client.start({.came = ..., .told = ..., .went = ...});
//     // now and then:
//     client.tryToConnect();
#pragma once

#include "bindwatch/bind_stream.h"
#include "posix/file_descriptor.h"

#include <QSocketNotifier>

#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace zenlot {

class BindwatchClient {
  public:
    struct Handlers {
        std::function<void()> came; // from now on everything is told
        std::function<void(const BindPacket& packet)> told;
        std::function<void()> went;
    };

    explicit BindwatchClient(std::string path);
    ~BindwatchClient();

    // Calls the handlers from now on; not from within.
    void start(Handlers handlers);

    // Costs next to nothing where there is none. One that talks nonsense is left alone for a while.
    void tryToConnect();

    bool isConnected() const { return isGreeted_; }

  private:
    void read();
    void disconnect();

    std::string path_;
    Handlers handlers_;
    FileDescriptor socket_;
    std::unique_ptr<QSocketNotifier> notifier_;
    std::chrono::steady_clock::time_point notBefore_{};
    bool isGreeted_{false};
};

} // namespace zenlot
