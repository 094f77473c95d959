// A source whose events a test makes.
#pragma once

#include "bindwatch/bind_source.h"
#include "posix/file_descriptor.h"

#include <sys/eventfd.h>

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace zenlot {

class FakeBindSource final : public BindSource {
  public:
    bool canStart{true};
    bool isStarted{false};
    std::map<std::uint32_t, std::uint64_t> lost;

    std::set<std::uint32_t> followed;

    // Also of a user who is not followed: what is on its way can't be taken back.
    void happen(const BindEvent& event) {
        events_.push_back(event);
        ::eventfd_write(signal_.get(), 1);
    }

    bool start() override { return isStarted = canStart; }
    void stop() override { isStarted = false; }
    bool follow(std::uint32_t user) override {
        followed.insert(user);
        return true;
    }
    void unfollow(std::uint32_t user) override { followed.erase(user); }
    int descriptor() const override { return signal_.get(); }

    void read(const std::function<void(const BindEvent&)>& call) override {
        eventfd_t count = 0;
        ::eventfd_read(signal_.get(), &count);
        for (const BindEvent& event : std::exchange(events_, {}))
            call(event);
    }

    std::uint64_t lostOf(std::uint32_t user) const override {
        const auto found = lost.find(user);
        return found == lost.end() ? 0 : found->second;
    }

  private:
    FileDescriptor signal_{::eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)};
    std::vector<BindEvent> events_;
};

} // namespace zenlot
