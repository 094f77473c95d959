// One line of the log, and its colour.
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

struct LogLine {
    qint64 index{0};     // among the lines that are not empty, from 0
    QByteArrayView text; // without its line feed, as long as the text that it is cut from is there

    // Two lines have the same identity when they are equal and stand at the same place.
    QString id() const;

    friend bool operator==(const LogLine&, const LogLine&) = default;
};

// By words that it holds, in either case and also inside of longer words: errors before conflicts,
// those before starts, those before ends.
LogLineTint lineColor(QByteArrayView text);

} // namespace zenlot
