// Binary property lists: a table of objects that refer to each other by number, circles included.
//
// References are followed for one step, from the outermost dictionary to its keys and values.
#pragma once

#include "platform/property_list.h"

#include <QByteArray>

namespace zenlot {

// Those of the keys that stand in the outermost dictionary with a text. What is unsound counts as
// absent.
PropertyTexts textsOfBinaryPropertyList(const QByteArray& content, const QStringList& keys);

} // namespace zenlot
