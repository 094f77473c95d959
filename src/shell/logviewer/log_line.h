// What is known of one line of the log besides its text.
#pragma once

#include <QByteArrayView>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace zenlot {

namespace log_line {
Q_NAMESPACE
QML_NAMED_ELEMENT(LogLineTint)

// The colour of a line, from what it seems to tell.
enum class Tint : int { Plain, Red, Orange, Green, Teal };
Q_ENUM_NS(Tint)
} // namespace log_line

using LogLineTint = log_line::Tint;

// By words that it holds, in either case and also inside of longer words: errors before conflicts,
// those before starts, those before ends.
LogLineTint lineColor(QByteArrayView text);

// Two lines have the same identity when they are equal and stand at the same place.
QString logLineId(qint64 index, QByteArrayView text);

} // namespace zenlot
