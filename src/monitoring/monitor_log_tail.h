// Follows the monitor log and finds the announcements of conflicts in what is appended to it.
//
// The first reading only marks the end of the log, and so does one that finds it no longer than
// before: after the log was cleared, what stands before the mark is not read. The part behind the
// mark is read up to the end that the log had when the reading began, and counts only when it is
// UTF-8 as a whole. Lines end with a line feed; the beginning of a line that is still being written
// is taken for a line.
//
// Lines that the application itself wrote are passed over, since they quote the names of other
// processes, which may look like announcements; so are lines longer than kLongestLine.
//
// Any one thread at a time may use it; each step waits for the disk, and none needs more memory
// than a few pieces of the file. A log that is missing, may not be read or is no regular file is
// passed over silently.
//
//     if (tail.begin().isPieceFound) {
//         for (auto lines = tail.nextAnnouncements(); !lines.empty();
//              lines = tail.nextAnnouncements())
//             ...
//     }
#pragma once

#include <QByteArray>
#include <QFile>
#include <QLatin1StringView>
#include <QString>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zenlot {

// What every announcement contains.
inline constexpr QLatin1StringView kConflictAnnouncement{"[zenlot-daemon] broadcasting"};

class MonitorLogTail {
  public:
    static constexpr qint64 kBytesAtATime = qint64{256} * 1024;
    static constexpr std::size_t kLongestLine = std::size_t{64} * 1024; // in bytes

    struct Beginning {
        bool isPieceFound{false};
        std::optional<QString> error; // why the new part can't be reached, in words
    };

    explicit MonitorLogTail(const QString& path);

    // Moves the mark to the end of the log. A piece that an earlier call found is given up.
    Beginning begin();

    // Some of the announcements in the piece that begin() found, in their order; empty after the
    // last one.
    std::vector<QString> nextAnnouncements();

  private:
    std::unique_ptr<QFile> openLog() const;
    Beginning moveMark();
    bool isPieceUtf8();
    bool readOn();
    void takeLine(std::string_view line, std::vector<QString>& announcements);
    void finishPiece(std::vector<QString>& announcements);

    QByteArray path_;
    std::optional<qint64> mark_;
    // Enough of the line in which the last piece ended to see who wrote it.
    std::string startOfLine_;

    // Of the piece that is being read.
    std::unique_ptr<QFile> log_;
    qint64 unread_{0};
    std::string chunk_;
    std::string unfinishedLine_; // of a line that is too long only as much as shows it
};

} // namespace zenlot
