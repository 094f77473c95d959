// Looks at this machine and this session for diagnosis.h.
#pragma once

#include "ctl/diagnosis.h"

#include <vector>

namespace zenlot {

// Takes up to a second for each program on the bus that does not answer.
std::vector<Finding> examineMachine();

} // namespace zenlot
