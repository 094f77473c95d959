// Makes text that another program chose fit for one line of ours.
#pragma once

#include <QString>

#include <string>

namespace zenlot {

inline constexpr qsizetype kLongestLine = 256; // a file name has 255 bytes at the most

// The first so many characters, of which none is cut in two.
QString cutOff(const QString& text, qsizetype longest);

// The same with an ellipsis behind it when something is missing.
QString withEllipsis(const QString& text, qsizetype longest);

// The text with U+FFFD for every character that breaks a line, does something to a terminal or
// turns the direction of what follows, and cut off with an ellipsis beyond a length that nobody
// reads, or that a sentence around it can bear.
QString displayLine(const QString& text, qsizetype longest = kLongestLine);
QString displayLine(const std::string& utf8, qsizetype longest = kLongestLine);

} // namespace zenlot
