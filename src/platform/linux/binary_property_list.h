// Weighs binary property lists before they are read.
//
// Objects refer to each other by number, so a few bytes can describe a structure without end, or
// one that doubles with each step. And the library stops the program at a key with a zero in it.
#pragma once

#include <QByteArray>

namespace zenlot {

// Whether the structure is sound, at most `deepest` levels deep, and written out without shared
// parts no heavier than `heaviest`: one for each object and one for each byte of its content.
bool isModestBinaryPropertyList(const QByteArray& content, int deepest, qint64 heaviest);

} // namespace zenlot
