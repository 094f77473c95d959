// Makes text that another program chose fit for a service that shows alerts.
//
// The result is one line of valid characters: U+FFFD stands for everything that breaks a line, does
// something to a terminal, turns the direction of what follows or is no character at all, for which
// some services close the connection. Long texts lose their middle, so that a sentence around a
// long name keeps its end.
#pragma once

#include <QString>

namespace zenlot {

QString alertText(const QString& text);

// The same for services that render markup: nothing in the text is read as such.
QString alertMarkup(const QString& text);

} // namespace zenlot
