// The monitor log as it was at one moment.
//
// Lines are what stands between line feeds; empty ones do not count. A carriage return belongs to
// its line. The text is held once, in pieces of whole lines, and a line is cut out of its piece
// when it is asked for: a log of some hundred megabytes costs its own size and hardly more, and a
// text that was read again shares every piece that is still the same with the text before.
//
//     std::optional<LogText> text = readLogText(path, LogText(), isStopped);
//     for (qint64 index = 0; index < text->lineCount(); ++index) show(text->line(index).text);
//
// Reading takes as long as the disk does and belongs on a worker thread. It never waits for
// somebody else: a pipe is no file. Texts are values that do not change; any thread may look at
// one.
#pragma once

#include "shell/logviewer/coloured_line.h"

#include <QByteArrayView>
#include <QString>
#include <QtGlobal>

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

namespace zenlot {

class LogText final {
  public:
    qint64 lineCount() const { return lineCount_; }
    LogLine line(qint64 index) const;

    // lineColor() of the line's text, but at once also for one of some megabytes.
    LogLineTint tint(qint64 index) const;

    // The size in bytes that the file had when it was read; 0 when it is not known.
    qint64 size() const { return size_; }

    // How many lines at the beginning are those of the other text. Takes as long as reading.
    qint64 countOfEqualLines(const LogText& other) const;

  private:
    friend class LogTextReader;

    struct Piece;
    struct Place {
        std::shared_ptr<const Piece> piece;
        qint64 firstLine{0};
    };
    class Cursor;

    const Place& placeOf(qint64 index) const;
    void append(std::shared_ptr<const Piece> piece);

    std::vector<Place> places_;
    qint64 lineCount_{0};
    qint64 size_{0};
};

// None when there is no such file, when it can't be read or is not valid UTF-8, and when
// `isStopped` became true in the meantime. The lines are those of the file whatever `before` is.
std::optional<LogText> readLogText(const QString& path, const LogText& before,
                                   const std::atomic<bool>& isStopped);

// The size of the file in bytes, none when that can't be found out.
std::optional<qint64> logFileSize(const QString& path);

// Puts an empty file in the place of the log at once. None when done, else what went wrong.
std::optional<QString> clearLogFile(const QString& path);

} // namespace zenlot
