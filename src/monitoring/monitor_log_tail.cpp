#include "monitoring/monitor_log_tail.h"

#include "posix/regular_file.h"

#include <QByteArrayView>

#include <algorithm>
#include <utility>

namespace zenlot {
namespace {

constexpr std::string_view kOwnTag = " [zenlot-app] ";
constexpr std::size_t kLongestStart = 64; // more than a time stamp and the tag

// The tag counts only at its place, behind the time stamp. Elsewhere it is what somebody quotes.
bool isOwnLine(std::string_view line) {
    const std::size_t space = line.find(' ');
    return space != std::string_view::npos && line.substr(space).starts_with(kOwnTag);
}

// Where the last character begins, which the bytes that follow may continue.
std::size_t startOfLastCharacter(std::string_view text) {
    constexpr std::size_t kLongestCharacter = 4;
    for (std::size_t back = 1; back <= std::min(text.size(), kLongestCharacter); ++back) {
        const auto byte = static_cast<unsigned char>(text[text.size() - back]);
        if ((byte & 0xc0U) != 0x80U)
            return text.size() - back;
    }
    return text.size();
}

} // namespace

MonitorLogTail::MonitorLogTail(const QString& path) : path_(QFile::encodeName(path)) {}

MonitorLogTail::Beginning MonitorLogTail::begin() {
    log_ = openLog();
    Beginning beginning = log_ ? moveMark() : Beginning{};
    if (!beginning.isPieceFound)
        log_.reset();
    return beginning;
}

MonitorLogTail::Beginning MonitorLogTail::moveMark() {
    const qint64 end = log_->size();
    if (end == 0)
        return {};
    const std::optional<qint64> begin = std::exchange(mark_, end);
    if (!begin || end < *begin)
        startOfLine_.clear();
    if (!begin || end <= *begin)
        return {};
    if (!log_->seek(*begin))
        return {false, log_->errorString()};
    unread_ = end - *begin;
    if (!isPieceUtf8() || !log_->seek(*begin)) {
        startOfLine_.clear();
        return {};
    }
    unread_ = end - *begin;
    unfinishedLine_.clear();
    return {true, std::nullopt};
}

std::vector<QString> MonitorLogTail::nextAnnouncements() {
    std::vector<QString> announcements;
    while (log_ && announcements.empty()) {
        if (!readOn()) {
            finishPiece(announcements);
            break;
        }
        std::string_view rest = chunk_;
        for (std::size_t end = rest.find('\n'); end != std::string_view::npos;
             end = rest.find('\n')) {
            if (unfinishedLine_.empty())
                takeLine(rest.substr(0, end), announcements);
            else
                takeLine(std::exchange(unfinishedLine_, {}).append(rest.substr(0, end)),
                         announcements);
            rest.remove_prefix(end + 1);
        }
        // One byte too many is enough to show that the line is too long.
        const std::size_t room =
            kLongestLine + 1 - std::min(kLongestLine + 1, unfinishedLine_.size());
        unfinishedLine_.append(rest.substr(0, room));
    }
    return announcements;
}

std::unique_ptr<QFile> MonitorLogTail::openLog() const {
    std::optional<RegularFile> file = openRegularFile(path_.constData());
    auto log = std::make_unique<QFile>();
    if (!file || !log->open(file->descriptor.get(), QIODevice::ReadOnly | QIODevice::Unbuffered,
                            QFile::AutoCloseHandle))
        return nullptr;
    file->descriptor.release();
    return log;
}

bool MonitorLogTail::isPieceUtf8() {
    std::string text; // begins with the last character of what was read before
    while (readOn()) {
        text += chunk_;
        const std::size_t whole = startOfLastCharacter(text);
        if (!QByteArrayView(text.data(), static_cast<qsizetype>(whole)).isValidUtf8())
            return false;
        text.erase(0, whole);
    }
    return log_->error() == QFileDevice::NoError && QByteArrayView(text).isValidUtf8();
}

// Reads the next chunk of the piece. False at its end, which comes early when the log was cut or
// can no longer be read.
bool MonitorLogTail::readOn() {
    chunk_.resize(static_cast<std::size_t>(std::min(unread_, kBytesAtATime)));
    const qint64 count =
        std::max(log_->read(chunk_.data(), static_cast<qint64>(chunk_.size())), qint64{0});
    chunk_.resize(static_cast<std::size_t>(count));
    unread_ -= count;
    return count > 0;
}

void MonitorLogTail::takeLine(std::string_view line, std::vector<QString>& announcements) {
    const std::string start = std::exchange(startOfLine_, {});
    const std::string_view sought(kConflictAnnouncement.data(), kConflictAnnouncement.size());
    if (line.size() > kLongestLine || line.find(sought) == std::string_view::npos ||
        isOwnLine(start + std::string(line.substr(0, kLongestStart))))
        return;
    announcements.push_back(QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())));
}

void MonitorLogTail::finishPiece(std::vector<QString>& announcements) {
    const std::string line = std::exchange(unfinishedLine_, {});
    std::string start = (startOfLine_ + line).substr(0, kLongestStart);
    takeLine(line, announcements);
    startOfLine_ = std::move(start);
    log_.reset();
    chunk_ = {};
}

} // namespace zenlot
