// Turns paths into names that people recognise. Pure functions, but for the file query of
// resolveCommandExecutable. Nothing fails: what is missing gives empty text or none.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zenlot {

// The last component of an executable path; empty for an empty path or one that ends in "/".
std::string processNameOf(std::string_view executablePath);

// The name for people: of the innermost application or framework bundle around the executable,
// else the process name with a capital first letter; in both cases with its words spaced.
std::string makeDisplayName(std::string_view executablePath, std::string_view processName);

// "MySQLServer" becomes "My SQL Server". Only ASCII letters count as letters.
std::string splitCamelCase(std::string_view text);

// The innermost directory of the path (or the path itself) that ends in ".app".
std::optional<std::string> enclosingAppBundlePath(std::string_view executablePath);

// Whether there is a file, and no directory, at a path.
using FileQuery = std::function<bool(const std::string& path)>;
bool isExistingFile(const std::string& path);

// The executable of a command line whose path may hold spaces: the shortest extension of the first
// word, word by word, at which there is a file; the first word when there is none.
std::string resolveCommandExecutable(std::string_view command,
                                     const FileQuery& isFile = isExistingFile);

// The text with every ill-formed UTF-8 sequence replaced by U+FFFD.
std::string sanitizedUtf8(std::string_view bytes);

} // namespace zenlot
