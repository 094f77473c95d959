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

// With those above it that are missing. Only the owner gets in, whatever the process gives to new
// files; what is there already stays as it is.
bool makePrivateDirectory(const QString& path) {
    const auto isThere = [&path] { return QFileInfo(path).isDir(); };
    return isThere() ||
           (makePrivateDirectory(QFileInfo(path).path()) &&
            (QDir().mkdir(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner) ||
             isThere()));
}

} // namespace

AppLog::AppLog(const QString& path, Clock clock, Author author)
    : path_(QFile::encodeName(path)), clock_(std::move(clock)), author_(author) {}

QByteArray AppLog::line(const QString& message) const {
    using std::chrono::duration_cast;
    using std::chrono::milliseconds;
    const auto now = duration_cast<milliseconds>(clock_().time_since_epoch());
    const QString time = QDateTime::fromMSecsSinceEpoch(now.count(), Qt::UTC).toString(Qt::ISODate);
    const QString tag =
        author_ == Author::application ? u" [zenlot-app] "_s : u" [zenlot-daemon] "_s;
    return (time + tag + logLine(message, kLongestMessage)).toUtf8() + '\n';
}

void AppLog::writeAppLog(const QString& message) {
    const std::scoped_lock lock(mutex_);
    if (waiting_.size() > kMostWaiting) {
        ++leftOut_;
        return;
    }
    if (leftOut_ > 0)
        waiting_ += line(u"%1 lines left out"_s.arg(std::exchange(leftOut_, 0)));
    waiting_ += line(message);
    if (!std::exchange(isWriting_, true))
        writer_.post([this] { writeWaiting(); });
}

void AppLog::makeFolder() {
    const std::scoped_lock lock(mutex_);
    writer_.post([this] { makePrivateDirectory(QFileInfo(QFile::decodeName(path_)).path()); });
}

void AppLog::settle() {
    writer_.wait();
}

// On the writer's thread.
void AppLog::writeWaiting() {
    for (;;) {
        QByteArray lines;
        {
            const std::scoped_lock lock(mutex_);
            lines.swap(waiting_);
            isWriting_ = !lines.isEmpty();
        }
        if (lines.isEmpty())
            return;
        // One program alone, since of two that come to it together one would put its new log in the
        // place of the old one.
        if (author_ == Author::backgroundMonitor)
            setLongLogAside(path_);
        // A taken name is a file that has just been made, or a symbolic link whose file is missing.
        // A file system without links is left with making the file and writing to it in two steps.
        if (!append(path_, lines, Missing::leave) && create(path_, lines) == Creation::nameTaken)
            append(path_, lines, Missing::create);
    }
}

QString monitorLogPath(const QString& home) {
    return home + u"/Library/Logs/zenlot-monitor.log"_s;
}

} // namespace zenlot
