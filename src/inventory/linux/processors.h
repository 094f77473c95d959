// How many processors this process may use: those that its affinity leaves it, which is less than
// the machine has in many a container.
#pragma once

namespace zenlot {

unsigned availableProcessors();

} // namespace zenlot
