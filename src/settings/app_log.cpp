#include "settings/app_log.h"

#include "text/log_line.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kLongestMessage = 4096;

bool writeWhole(int descriptor, const QByteArray& line) {
    qsizetype written = 0;
    while (written < line.size()) {
        const ssize_t count = ::write(descriptor, line.constData() + written,
                                      static_cast<std::size_t>(line.size() - written));
        if (count < 0 && errno != EINTR)
            return false;
        written += count > 0 ? count : 0;
    }
    return true;
}

enum class Missing { leave, create };

// False only when there is no file. The system puts each write of a file opened for appending
// behind all others, so that lines of several programs do not overwrite each other.
bool append(const QByteArray& path, const QByteArray& line, Missing missing) {
    // Without O_NONBLOCK, opening a FIFO would wait for a reader.
    const int flags = O_WRONLY | O_APPEND | O_NONBLOCK | O_CLOEXEC | O_NOCTTY |
                      (missing == Missing::create ? O_CREAT : 0);
    const int descriptor = ::open(path.constData(), flags, S_IRUSR | S_IWUSR);
    if (descriptor < 0)
        return errno != ENOENT;
    struct stat status {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode))
        writeWhole(descriptor, line);
    ::close(descriptor);
    return true;
}

void setLongLogAside(const QByteArray& path) {
    struct stat status {};
    if (::lstat(path.constData(), &status) == 0 && S_ISREG(status.st_mode) &&
        status.st_size > AppLog::kLongestLog)
        ::rename(path.constData(), (path + ".1").constData());
}

enum class Creation { created, nameTaken, failed };

// Makes the file together with its first line. A link, unlike a renaming, never takes the place of
// a file that another program made meanwhile.
Creation create(const QByteArray& path, const QByteArray& line) {
    QByteArray temporary = path + ".XXXXXX";
    const int descriptor = ::mkostemp(temporary.data(), O_CLOEXEC);
    if (descriptor < 0)
        return Creation::failed;
    const bool isWritten = writeWhole(descriptor, line);
    const bool isClosed = ::close(descriptor) == 0;
    Creation result = Creation::failed;
    if (isWritten && isClosed)
        result = ::link(temporary.constData(), path.constData()) == 0 ? Creation::created
                                                                      : Creation::nameTaken;
    ::unlink(temporary.constData());
    return result;
}

} // namespace

AppLog::AppLog(const QString& path, Clock clock, Author author)
    : path_(QFile::encodeName(path)), clock_(std::move(clock)), author_(author) {}

void AppLog::writeAppLog(const QString& message) {
    using std::chrono::duration_cast;
    using std::chrono::milliseconds;
    const auto now = duration_cast<milliseconds>(clock_().time_since_epoch());
    const QString time = QDateTime::fromMSecsSinceEpoch(now.count(), Qt::UTC).toString(Qt::ISODate);
    const QString tag =
        author_ == Author::application ? u" [zenlot-app] "_s : u" [zenlot-daemon] "_s;
    const QByteArray line = (time + tag + logLine(message, kLongestMessage)).toUtf8() + '\n';

    const std::scoped_lock lock(mutex_);
    // One program alone, since of two that come to it together one would put its new log in the
    // place of the old one.
    if (author_ == Author::backgroundMonitor)
        setLongLogAside(path_);
    if (append(path_, line, Missing::leave))
        return;
    // A taken name is a file that has just been made, or a symbolic link whose file is missing. A
    // file system without links is left with making the file and writing to it in two steps.
    if (create(path_, line) == Creation::nameTaken)
        append(path_, line, Missing::create);
}

QString monitorLogPath(const QString& home) {
    return home + u"/Library/Logs/zenlot-monitor.log"_s;
}

bool makeMonitorLogDirectory(const QString& home) {
    return QDir().mkpath(QFileInfo(monitorLogPath(home)).path());
}

} // namespace zenlot
