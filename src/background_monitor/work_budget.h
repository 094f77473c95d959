// Keeps work that others can cause within a share of the processor's time. A little may be done at
// once; whoever does more has to wait until the share has made up for it. Pure.
//
//     WorkBudget budget(1000, 20ms);      // a thousandth of the time, 20 ms of it at once
//     wait(budget.wait(now));
//     budget.spend(workedFor, now);
#pragma once

#include "background_monitor/attempt.h"

#include <chrono>

namespace zenlot {

class WorkBudget {
  public:
    // `rest` says how many times as long as the work everything else has.
    WorkBudget(int rest, std::chrono::nanoseconds atOnce);

    // How long to wait until work may begin; nothing while there is something left.
    BootTime wait(BootTime now) const;

    void spend(std::chrono::nanoseconds work, BootTime now);

  private:
    std::chrono::nanoseconds left(BootTime now) const;

    int rest_;
    std::chrono::nanoseconds atOnce_;
    std::chrono::nanoseconds left_; // at `asOf_`; below zero when more was done
    BootTime asOf_{0};
};

} // namespace zenlot
