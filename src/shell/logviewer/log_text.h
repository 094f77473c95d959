// The monitor log as it was at one moment: all of its text, and where its lines are.
//
// Lines are what stands between line feeds; empty ones do not count. A carriage return belongs to
// its line. The text is held once, and a line is cut out of it when it is asked for: a log of some
// hundred megabytes costs its own size and a few bytes for each line.
//
//     const LogText text = readLogText(path);
//     for (qint64 index = 0; index < text.lineCount(); ++index) show(text.line(index));
//
// Reading takes as long as the disk does and belongs on a worker thread. It never waits for
// somebody else: a pipe is no file.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QtGlobal>

#include <optional>
#include <vector>

namespace zenlot {

class LogText final {
  public:
    LogText() = default;
    // `bytes` is valid UTF-8; `size` is that of the file right after it was read.
    LogText(QByteArray bytes, qint64 size);

    qint64 lineCount() const { return static_cast<qint64>(starts_.size()); }
    QByteArrayView line(qint64 index) const;

    // The size of the file in bytes; 0 when it is not known.
    qint64 size() const { return size_; }

    // How many lines at the beginning are those of the other text.
    qint64 countOfEqualLines(const LogText& other) const;

  private:
    QByteArray bytes_;
    std::vector<qint64> starts_; // where each line begins
    qint64 size_{0};
};

// None when there is no such file, or when it can't be read or is not valid UTF-8.
std::optional<LogText> readLogText(const QString& path);

// The size of the file in bytes, none when that can't be found out.
std::optional<qint64> logFileSize(const QString& path);

// Puts an empty file in the place of the log at once. None when done, else what went wrong.
std::optional<QString> clearLogFile(const QString& path);

} // namespace zenlot
