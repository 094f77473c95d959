// Says what a plan to stop a server will end, and what is true afterwards.
#pragma once

#include "inventory/origin/port_stopper.h"

#include <QString>

namespace zenlot {

// What will end and who else is hit; of a plan that can't be carried out, why not.
QString stopPlanText(const StopPlan& plan);

// Empty where the port is free, which the window shows anyway.
QString stopResultText(const StopPlan& plan, const StopResult& result);

} // namespace zenlot
