// Where the events come from: the kernel, or a test.
#pragma once

#include "bindwatch/bind_stream.h"

#include <cstdint>
#include <functional>

namespace zenlot {

class BindSource {
  public:
    BindSource() = default;
    BindSource(const BindSource&) = delete;
    BindSource& operator=(const BindSource&) = delete;
    virtual ~BindSource() = default;

    // Begins to take note of the users who are followed; false when that is not to be had. While
    // nobody takes note it costs the machine nothing.
    virtual bool start() = 0;
    virtual void stop() = 0;

    // False when there are too many already.
    virtual bool follow(std::uint32_t user) = 0;
    virtual void unfollow(std::uint32_t user) = 0;

    // To wait on for reading.
    virtual int descriptor() const = 0;

    // Hands over what has come, without waiting.
    virtual void read(const std::function<void(const BindEvent&)>& call) = 0;

    // How many of the user's events found no room so far.
    virtual std::uint64_t lostOf(std::uint32_t user) const = 0;
};

} // namespace zenlot
