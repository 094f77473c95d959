// A command line as it may be shown: what looks like a secret is masked, and what is longer than
// anybody reads is cut off.
#pragma once

#include <span>
#include <string>

namespace zenlot {

// Words with blanks or quotes in them stand in quotes, as a shell takes them.
std::string maskedCommand(std::span<const std::string> commandLine);

} // namespace zenlot
