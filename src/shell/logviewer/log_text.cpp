#include "shell/logviewer/log_text.h"

#include <QFile>
#include <QSaveFile>
#include <QUtf8StringView>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace zenlot {
namespace {

// As much as a QByteArray is good for, and more than anybody scrolls through.
constexpr qint64 kMostBytes = qint64{2'000} * 1000 * 1000;

class Descriptor final {
  public:
    explicit Descriptor(const QString& path)
        // Without O_NONBLOCK, opening a FIFO would wait for a writer.
        : value_(::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() {
        if (value_ >= 0)
            ::close(value_);
    }

    std::optional<qint64> sizeOfRegularFile() const {
        struct stat status {};
        if (value_ < 0 || ::fstat(value_, &status) != 0 || !S_ISREG(status.st_mode))
            return std::nullopt;
        return status.st_size;
    }

    // As many bytes as there are, at most as many as there is room for; none on an error.
    std::optional<qint64> read(char* buffer, qint64 room) const {
        qint64 total = 0;
        while (total < room) {
            const ssize_t count =
                ::read(value_, buffer + total, static_cast<std::size_t>(room - total));
            if (count == 0)
                break;
            if (count < 0 && errno != EINTR)
                return std::nullopt;
            total += std::max<ssize_t>(count, 0);
        }
        return total;
    }

  private:
    int value_;
};

} // namespace

LogText::LogText(QByteArray bytes, qint64 size) : bytes_(std::move(bytes)), size_(size) {
    const char* const begin = bytes_.constData();
    const char* const end = begin + bytes_.size();
    for (const char* start = begin; start < end;) {
        const auto* stop = static_cast<const char*>(
            std::memchr(start, '\n', static_cast<std::size_t>(end - start)));
        if (stop == nullptr)
            stop = end;
        if (stop > start)
            starts_.push_back(start - begin);
        start = stop + 1;
    }
    starts_.shrink_to_fit();
}

QByteArrayView LogText::line(qint64 index) const {
    const qint64 start = starts_.at(static_cast<std::size_t>(index));
    const qsizetype stop = bytes_.indexOf('\n', start);
    return QByteArrayView(bytes_).sliced(start, (stop < 0 ? bytes_.size() : stop) - start);
}

qint64 LogText::countOfEqualLines(const LogText& other) const {
    const auto shorter = static_cast<std::size_t>(std::min(bytes_.size(), other.bytes_.size()));
    const auto difference = std::mismatch(
        bytes_.begin(), bytes_.begin() + static_cast<qsizetype>(shorter), other.bytes_.begin());
    const qint64 equalBytes = difference.first - bytes_.begin();
    // Lines that begin before the difference are equal, except perhaps the last of them.
    const auto beyond = std::lower_bound(starts_.begin(), starts_.end(), equalBytes);
    qint64 count = beyond - starts_.begin();
    if (count > 0 && (count > other.lineCount() || line(count - 1) != other.line(count - 1)))
        --count;
    return count;
}

std::optional<LogText> readLogText(const QString& path) {
    const Descriptor file(path);
    const std::optional<qint64> expected = file.sizeOfRegularFile();
    if (!expected || *expected > kMostBytes)
        return std::nullopt;
    // What is appended while the file is read waits for the next reading.
    QByteArray bytes(*expected, Qt::Uninitialized);
    const std::optional<qint64> count = file.read(bytes.data(), *expected);
    if (!count)
        return std::nullopt;
    bytes.truncate(*count);
    if (!QUtf8StringView(bytes).isValidUtf8())
        return std::nullopt;
    return LogText(std::move(bytes), *expected);
}

std::optional<qint64> logFileSize(const QString& path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return status.st_size;
}

std::optional<QString> clearLogFile(const QString& path) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.commit())
        return std::nullopt;
    return file.errorString();
}

} // namespace zenlot
