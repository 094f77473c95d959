// Tells of the ends of processes by their pidfds, one for each watch. A kernel that has none, and a
// sandbox that forbids them, can't tell.
#pragma once

#include "platform/process_end_watch.h"

namespace zenlot {

class PidfdProcessEndWatch final : public ProcessEndWatch {
  public:
    std::unique_ptr<Watch> watch(std::int64_t pid, std::function<void()> ended) override;
};

} // namespace zenlot
