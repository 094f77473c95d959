// Makes a message fit for one line of a log, whatever others put into it.
#pragma once

#include <QString>

namespace zenlot {

// The message with escapes for control characters, for those that some readers break lines at and
// for those that turn the direction of the text around them; names of other processes could
// otherwise disguise a line or add one. What exceeds `longest` characters is cut off beforehand, so
// that the line has at most six times as many, and an ellipsis.
QString logLine(const QString& message, qsizetype longest);

} // namespace zenlot
