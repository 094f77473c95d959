#include "background_monitor/work_budget.h"

#include <algorithm>

namespace zenlot {

WorkBudget::WorkBudget(int rest, std::chrono::nanoseconds atOnce)
    : rest_(rest), atOnce_(atOnce), left_(atOnce) {}

BootTime WorkBudget::wait(BootTime now) const {
    const std::chrono::nanoseconds missing = -left(now);
    return std::chrono::ceil<BootTime>(std::max(missing, std::chrono::nanoseconds(0)) * rest_);
}

void WorkBudget::spend(std::chrono::nanoseconds work, BootTime now) {
    left_ = left(now) - work;
    asOf_ = now;
}

std::chrono::nanoseconds WorkBudget::left(BootTime now) const {
    return std::min(atOnce_, left_ + std::chrono::nanoseconds(now - asOf_) / rest_);
}

} // namespace zenlot
