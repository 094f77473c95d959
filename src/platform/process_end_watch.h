// Tells when processes end, whoever started them and whoever's they are.
//
// Belongs to the main thread. Where the system can't tell, nothing is ever told.
//
//     watch_ = processEnds.watch(4312, [this] { withdraw(); });
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

namespace zenlot {

class ProcessEndWatch {
  public:
    // Watches for as long as it exists.
    class Watch {
      public:
        Watch() = default;
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;
        virtual ~Watch() = default;
    };

    ProcessEndWatch() = default;
    ProcessEndWatch(const ProcessEndWatch&) = delete;
    ProcessEndWatch& operator=(const ProcessEndWatch&) = delete;
    virtual ~ProcessEndWatch() = default;

    // Calls once, from the event loop, when the process has ended that has this id now; soon, when
    // there is none. The call may end the watch.
    virtual std::unique_ptr<Watch> watch(std::int64_t pid, std::function<void()> ended) = 0;
};

} // namespace zenlot
