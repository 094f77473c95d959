// The lines of one program in the log that the application and the background monitor share.
//
// A line is the time in UTC with whole seconds, the tag of the program and the message:
//
//     2026-11-16T20:25:47Z [zenlot-app] Conflict on port 3000
//
// Control characters in a message are written as escapes, since messages carry names of other
// processes and one event must stay one line; what exceeds 4096 characters is cut off.
//
// The background monitor begins a new log when the old one has become longer than kLongestLog, and
// keeps the old one, with ".1" behind its name, until the next time.
//
// Lines are written by a thread of the log's own, all that have come meanwhile at once; the end of
// this object waits for them. Nothing fails towards the caller: a line that can't be written is
// dropped, and where the disk does not answer, those that no longer fit in kMostWaiting are counted
// and the next line tells. Lines that other programs append at the same time survive.
//
//     AppLog log(monitorLogPath(home));
//     log.makeFolder();
//     log.writeAppLog(QStringLiteral("Monitoring started"));
#pragma once

#include "workers/worker_threads.h"

#include <QByteArray>
#include <QString>

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>

namespace zenlot {

class AppLog {
  public:
    using Clock = std::function<std::chrono::system_clock::time_point()>;

    // Whose lines they are: the application's carry "[zenlot-app]", those of the background monitor
    // "[zenlot-daemon]".
    enum class Author : std::uint8_t { application, backgroundMonitor };

    static constexpr qint64 kLongestLog = qint64{8} * 1024 * 1024;

    static constexpr qsizetype kMostWaiting = qsizetype{1} * 1024 * 1024;

    explicit AppLog(const QString& path, Clock clock = std::chrono::system_clock::now,
                    Author author = Author::application);

    // Appends one line, and makes the file but no folder when it is missing. Any thread may call.
    void writeAppLog(const QString& message);

    // Makes the folder of the log where it is missing, for the user alone.
    void makeFolder();

    // Until what came so far has been written.
    void settle();

  private:
    QByteArray line(const QString& message) const;
    void writeWaiting();

    QByteArray path_;
    Clock clock_;
    Author author_;
    std::mutex mutex_; // of all that follows
    QByteArray waiting_;
    qint64 leftOut_{0};
    bool isWriting_{false};
    WorkerThreads writer_{1}; // the last member
};

// Where the log of the user with this home directory is.
QString monitorLogPath(const QString& home);

} // namespace zenlot
