#include "shell/logviewer/log_text.h"

#include "posix/regular_file.h"

#include <QByteArray>
#include <QFile>
#include <QSaveFile>
#include <QUtf8StringView>

#include <sys/mman.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

namespace zenlot {
namespace {

// More than anybody scrolls through; its lines can be counted by the rows of a model.
constexpr qint64 kMostBytes = qint64{2'000} * 1000 * 1000;
// Looking through a piece for one of its lines takes microseconds.
constexpr qsizetype kPieceBytes = qsizetype{64} * 1024;

qint64 lineCount(QByteArrayView bytes) {
    int count = bytes.front() == '\n' ? 0 : 1;
    for (qsizetype at = 1; at < bytes.size();
         ++at) // without branches, the compiler takes many at once
        count += static_cast<int>(bytes[at - 1] == '\n') & static_cast<int>(bytes[at] != '\n');
    return count;
}

// Memory that goes back to the system at once, wherever in its heap a program allocates meanwhile.
class Pages final {
  public:
    explicit Pages(QByteArrayView bytes)
        : data_(::mmap(nullptr, static_cast<std::size_t>(bytes.size()), PROT_READ | PROT_WRITE,
                       MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)),
          size_(bytes.size()) {
        if (data_ == MAP_FAILED)
            throw std::bad_alloc();
        std::ranges::copy(bytes, static_cast<char*>(data_));
    }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;
    ~Pages() { ::munmap(data_, static_cast<std::size_t>(size_)); }

    QByteArrayView bytes() const { return {static_cast<const char*>(data_), size_}; }

  private:
    void* data_;
    qsizetype size_;
};

} // namespace

struct LogText::Piece {
    explicit Piece(QByteArrayView bytes)
        : pages(bytes), lineCount(zenlot::lineCount(bytes)),
          tintOfLongLine(bytes.size() > kPieceBytes ? std::optional(lineColor(bytes))
                                                    : std::nullopt) {}

    Pages pages; // whole lines
    qint64 lineCount;
    // A line that is too long for a piece is one of its own.
    std::optional<LogLineTint> tintOfLongLine;
};

// Goes through the lines from the beginning of a place.
class LogText::Cursor final {
  public:
    Cursor(const LogText& text, std::size_t place)
        : text_(text), place_(place),
          index_(place < text.places_.size() ? text.places_[place].firstLine : text.lineCount_) {}

    // There is one more.
    LogLine next() {
        for (;;) {
            const QByteArrayView rest =
                text_.places_.at(place_).piece->pages.bytes().sliced(position_);
            const qsizetype feed = rest.indexOf('\n');
            const qsizetype length = feed < 0 ? rest.size() : feed;
            if (feed < 0 || feed + 1 == rest.size()) {
                ++place_;
                position_ = 0;
            } else {
                position_ += feed + 1;
            }
            if (length > 0)
                return {index_++, rest.first(length)};
        }
    }

  private:
    const LogText& text_;
    std::size_t place_;
    qsizetype position_{0};
    qint64 index_;
};

const LogText::Place& LogText::placeOf(qint64 index) const {
    const auto after = std::ranges::upper_bound(places_, index, {}, &Place::firstLine);
    return *std::prev(after);
}

LogLine LogText::line(qint64 index) const {
    const Place& place = placeOf(index);
    Cursor cursor(*this, static_cast<std::size_t>(&place - places_.data()));
    for (qint64 before = place.firstLine; before < index; ++before)
        cursor.next();
    return cursor.next();
}

LogLineTint LogText::tint(qint64 index) const {
    const std::optional<LogLineTint> known = placeOf(index).piece->tintOfLongLine;
    return known ? *known : lineColor(line(index).text);
}

qint64 LogText::countOfEqualLines(const LogText& other) const {
    const auto firstDifference =
        std::ranges::mismatch(places_, other.places_, {}, &Place::piece, &Place::piece);
    const auto shared = static_cast<std::size_t>(firstDifference.in1 - places_.begin());
    Cursor lines(*this, shared);
    Cursor otherLines(other, shared);
    const qint64 most = std::min(lineCount_, other.lineCount_);
    qint64 count = shared < places_.size() ? places_[shared].firstLine : lineCount_;
    while (count < most && lines.next() == otherLines.next())
        ++count;
    return count;
}

void LogText::append(std::shared_ptr<const Piece> piece) {
    const qint64 firstLine = std::exchange(lineCount_, lineCount_ + piece->lineCount);
    places_.push_back({std::move(piece), firstLine});
}

// One reading of a file.
class LogTextReader final {
  public:
    LogTextReader(const QString& path, const std::atomic<bool>& isStopped)
        : file_(openRegularFile(QFile::encodeName(path).constData())), isStopped_(isStopped) {}

    std::optional<LogText> read(const LogText& before) {
        if (!file_ || file_->status.st_size > kMostBytes)
            return std::nullopt;
        // What is appended while the file is read waits for the next reading: otherwise the size
        // would be another one than that of the text, and the rest would never be looked at.
        left_ = text_.size_ = file_->status.st_size;
        shareWithTextBefore(before);
        for (QByteArrayView block = next(kPieceBytes); !block.empty(); block = next(kPieceBytes))
            cut(block);
        cutOff(pending_.size());
        if (isFailed_)
            return std::nullopt;
        text_.places_.shrink_to_fit();
        return std::move(text_);
    }

  private:
    // Empty at the end, and also after a failure.
    QByteArrayView next(qint64 most) {
        if (isFailed_ || isStopped_) {
            isFailed_ = true;
            return {};
        }
        const auto room = static_cast<std::size_t>(std::min({most, left_, qint64{block_.size()}}));
        const auto read = readFully(file_->descriptor, {block_.data(), room});
        isFailed_ = !read;
        const auto count = static_cast<qsizetype>(read.value_or(0));
        left_ -= count;
        return QByteArrayView(block_).first(count);
    }

    void shareWithTextBefore(const LogText& before) {
        // The last piece may go on now.
        for (std::size_t place = 0; place + 1 < before.places_.size(); ++place) {
            const std::shared_ptr<const LogText::Piece>& piece = before.places_[place].piece;
            const QByteArrayView bytes = piece->pages.bytes();
            qsizetype equal = 0;
            while (equal < bytes.size()) {
                const QByteArrayView block = next(bytes.size() - equal);
                if (block.empty() || block != bytes.sliced(equal, block.size())) {
                    cut(bytes.first(equal));
                    cut(block);
                    return;
                }
                equal += block.size();
            }
            text_.append(piece);
        }
    }

    void cut(QByteArrayView bytes) {
        pending_.append(bytes);
        while (pending_.size() >= kPieceBytes) {
            qsizetype feed = pending_.lastIndexOf('\n', kPieceBytes - 1);
            if (feed < 0)
                feed = pending_.indexOf('\n', std::max(kPieceBytes, searched_));
            searched_ = pending_.size();
            if (feed < 0)
                return;
            cutOff(feed + 1);
        }
    }

    void cutOff(qsizetype size) {
        if (size == 0 || isFailed_)
            return;
        const QByteArrayView bytes = QByteArrayView(pending_).first(size);
        // A line feed is never a part of another character, so that a piece is valid by itself.
        isFailed_ = !QUtf8StringView(bytes).isValidUtf8();
        text_.append(std::make_shared<LogText::Piece>(bytes));
        pending_.remove(0, size);
        searched_ = 0;
    }

    std::optional<RegularFile> file_;
    const std::atomic<bool>& isStopped_;
    LogText text_;
    QByteArray block_{kPieceBytes, Qt::Uninitialized};
    QByteArray pending_;    // what does not make a piece yet
    qsizetype searched_{0}; // so much of it for a line feed
    qint64 left_{0};        // bytes to be read
    bool isFailed_{false};
};

std::optional<LogText> readLogText(const QString& path, const LogText& before,
                                   const std::atomic<bool>& isStopped) {
    try {
        return LogTextReader(path, isStopped).read(before);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

std::optional<qint64> logFileSize(const QString& path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
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
