// A ProcessEndWatch for tests, in which processes end when the test says so.
//
//     FakeProcessEndWatch processEnds;
//     manager.notifyConflict(3000, u"node"_s, {{42, 7}});
//     processEnds.end(42);
#pragma once

#include "platform/process_end_watch.h"

#include <map>
#include <utility>

namespace zenlot {

class FakeProcessEndWatch final : public ProcessEndWatch {
  public:
    std::size_t count() const { return watches_.size(); }

    // Tells everybody who watches the process, in the order in which they began.
    void end(std::int64_t pid) {
        for (std::uint64_t number = 0; number < begun_; ++number) {
            const auto found = watches_.find(number);
            if (found != watches_.end() && found->second.first == pid)
                std::exchange(found->second.second, [] {})();
        }
    }

    std::unique_ptr<Watch> watch(std::int64_t pid, std::function<void()> ended) override {
        watches_[begun_] = {pid, std::move(ended)};
        return std::make_unique<Entry>(watches_, begun_++);
    }

  private:
    using Watches = std::map<std::uint64_t, std::pair<std::int64_t, std::function<void()>>>;

    class Entry final : public Watch {
      public:
        Entry(Watches& watches, std::uint64_t number) : watches_(watches), number_(number) {}
        Entry(const Entry&) = delete;
        Entry& operator=(const Entry&) = delete;
        ~Entry() override { watches_.erase(number_); }

      private:
        Watches& watches_;
        std::uint64_t number_;
    };

    Watches watches_;
    std::uint64_t begun_{0};
};

} // namespace zenlot
