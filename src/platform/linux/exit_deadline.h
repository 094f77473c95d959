// An end for programs that have nothing to lose any more.
#pragma once

#include <chrono>

namespace zenlot {

// Ends the program with this status after this time, whatever its threads do: each of them, the
// main thread too, may wait for a disk that never answers.
void exitWithin(std::chrono::milliseconds time, int status);

// How long the end of a program may take once its event loop has ended.
inline constexpr std::chrono::milliseconds kLongestEnd{400};

} // namespace zenlot
