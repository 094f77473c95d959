#include "shell/logviewer/log_tab_view_model.h"

#include <QClipboard>
#include <QCoroFuture>
#include <QGuiApplication>
#include <QPointer>

#include <memory>
#include <system_error>
#include <thread>
#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;
using Text = std::shared_ptr<const LogText>;

// A reading and how it compares with what was shown before, since comparing takes long too.
struct Reading {
    Text text;
    qint64 equalLines{0};
};

Reading readAgain(const QString& path, const Text& before, const std::atomic<bool>& isStopped) {
    std::optional<LogText> text = readLogText(path, *before, isStopped);
    auto read = std::make_shared<const LogText>(text ? *std::move(text) : LogText());
    const qint64 equalLines = read->countOfEqualLines(*before);
    return {std::move(read), equalLines};
}

// Giving back some hundred megabytes takes its time, which nobody waits for: not even whoever
// closes the window.
void discard(Text text) {
    try {
        std::thread([garbage = std::move(text)]() mutable { garbage.reset(); }).detach();
    } catch (const std::system_error&) {
        // There is no thread left, and it was given back here.
    }
}

} // namespace

LogTabViewModel::LogTabViewModel(QString path, AppLog& log, QObject* parent)
    : QObject(parent), path_(std::move(path)), log_(log) {
    timer_.setInterval(kPollInterval);
    connect(&timer_, &QTimer::timeout, this, &LogTabViewModel::pollLogSize);
    connect(&lines_, &LogLineModel::marksChanged, this, &LogTabViewModel::hasMarksChanged);
}

LogTabViewModel::~LogTabViewModel() {
    isStopped_ = true;
    Text shown = lines_.text();
    lines_.setText(std::make_shared<const LogText>(), 0);
    discard(std::move(shown));
}

void LogTabViewModel::appear() {
    if (!std::exchange(isReading_, true))
        Q_EMIT isReadingChanged();
    reloadLog();
    timer_.start();
}

void LogTabViewModel::disappear() {
    timer_.stop();
}

template <typename Work, typename Apply>
QCoro::Task<> LogTabViewModel::runOnWorker(Work work, Apply apply) {
    const QPointer<LogTabViewModel> self(this);
    const auto working = worker_.run(std::move(work));
    const auto result = co_await working;
    if (self)
        apply(result);
}

void LogTabViewModel::reloadLog() {
    // Each reading is compared with the one before, which has to be there.
    if (std::exchange(isReloading_, true)) {
        isReloadDue_ = true;
        return;
    }
    runOnWorker([path = path_, before = lines_.text(),
                 this] { return readAgain(path, before, isStopped_); },
                [this, number = textNumber_](const Reading& reading) {
                    isReloading_ = false;
                    // The log may have been cleared in between.
                    show(reading.text, number == textNumber_ ? reading.equalLines : 0);
                    if (std::exchange(isReloadDue_, false))
                        reloadLog();
                    else if (std::exchange(isReading_, false))
                        Q_EMIT isReadingChanged();
                });
}

void LogTabViewModel::pollLogSize() {
    // Where the disk is slow, a reading takes longer than the interval.
    if (isReloading_ || std::exchange(isPolling_, true))
        return;
    runOnWorker([path = path_] { return logFileSize(path); },
                [this](std::optional<qint64> size) {
                    isPolling_ = false;
                    if (size && *size != lastSize())
                        reloadLog();
                });
}

void LogTabViewModel::clearLog() {
    runOnWorker(
        [path = path_, &log = log_, this]() -> std::optional<Reading> {
            if (const std::optional<QString> error = clearLogFile(path)) {
                log.writeAppLog(u"log clear failed: "_s + *error);
                return std::nullopt;
            }
            log.writeAppLog(u"log cleared"_s);
            log.settle();
            return readAgain(path, std::make_shared<const LogText>(), isStopped_);
        },
        [this](const std::optional<Reading>& cleared) {
            if (!cleared)
                return;
            // Empty first, which no mark outlives; nobody sees that, because the next comes at
            // once.
            show(std::make_shared<const LogText>(), 0);
            show(cleared->text, 0);
        });
}

void LogTabViewModel::show(const Text& text, qint64 equalLines) {
    const int before = lines_.rowCount();
    Text shownBefore = lines_.text();
    lines_.setText(text, equalLines);
    ++textNumber_;
    const int after = lines_.rowCount();
    if ((before > 0) != (after > 0))
        Q_EMIT hasLinesChanged();
    if (before != after)
        Q_EMIT lineCountChanged();
    discard(std::move(shownBefore));
}

void LogTabViewModel::toggleMark(int row) {
    lines_.toggleMark(row);
}

void LogTabViewModel::unmarkAll() {
    lines_.unmarkAll();
}

void LogTabViewModel::copyLine(int row) const {
    if (row >= 0 && row < lines_.rowCount())
        QGuiApplication::clipboard()->setText(QString::fromUtf8(lines_.text()->line(row).text));
}

void LogTabViewModel::copyPath() const {
    QGuiApplication::clipboard()->setText(path_);
}

} // namespace zenlot
