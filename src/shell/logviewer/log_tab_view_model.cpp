#include "shell/logviewer/log_tab_view_model.h"

#include <QClipboard>
#include <QFutureWatcher>
#include <QGuiApplication>
#include <QtConcurrentRun>

#include <memory>
#include <type_traits>
#include <utility>

namespace zenlot {
namespace {

using Text = std::shared_ptr<const LogText>;

// A reading and what it has been compared with, since comparing takes long too.
struct Reading {
    Text text;
    Text before;
    qint64 equalLines{0};
};

Reading readAgain(const QString& path, const Text& before) {
    std::optional<LogText> text = readLogText(path);
    auto read = std::make_shared<const LogText>(text ? *std::move(text) : LogText());
    const qint64 equalLines = read->countOfEqualLines(*before);
    return {std::move(read), before, equalLines};
}

} // namespace

LogTabViewModel::LogTabViewModel(QString path, AppLog& log, QObject* parent)
    : QObject(parent), path_(std::move(path)), log_(log) {
    worker_.setMaxThreadCount(1);
    timer_.setInterval(kPollInterval);
    connect(&timer_, &QTimer::timeout, this, &LogTabViewModel::pollLogSize);
    connect(&lines_, &LogLineModel::marksChanged, this, &LogTabViewModel::hasMarksChanged);
}

void LogTabViewModel::appear() {
    reloadLog();
    timer_.start();
}

void LogTabViewModel::disappear() {
    timer_.stop();
}

template <typename Work, typename Apply>
void LogTabViewModel::runOnWorker(Work work, Apply apply) {
    using Result = std::invoke_result_t<Work>;
    // A future's own continuation may not outlive its context.
    auto* watcher = new QFutureWatcher<Result>(this);
    connect(watcher, &QFutureWatcherBase::finished, this,
            [watcher, apply = std::move(apply)]() mutable {
                watcher->deleteLater();
                apply(watcher->result());
            });
    watcher->setFuture(QtConcurrent::run(&worker_, std::move(work)));
}

void LogTabViewModel::reloadLog() {
    ++readings_;
    runOnWorker([path = path_, before = lines_.text()] { return readAgain(path, before); },
                [this](const Reading& reading) {
                    --readings_;
                    // Another text may have come in between.
                    const bool isComparable = reading.before == lines_.text();
                    show(reading.text, isComparable ? reading.equalLines : 0);
                });
}

void LogTabViewModel::pollLogSize() {
    // Where the disk is slow, a reading takes longer than the interval.
    if (readings_ > 0 || std::exchange(isPolling_, true))
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
        [path = path_, &log = log_] {
            const std::optional<QString> error = clearLogFile(path);
            log.writeAppLog(error ? QStringLiteral("log clear failed: ") + *error
                                  : QStringLiteral("log cleared"));
            return !error;
        },
        [this](bool isCleared) {
            if (!isCleared)
                return;
            show(std::make_shared<const LogText>(), 0);
            reloadLog();
        });
}

void LogTabViewModel::show(Text text, qint64 equalLines) {
    const int before = lines_.rowCount();
    lines_.setText(std::move(text), equalLines);
    const int after = lines_.rowCount();
    if ((before > 0) != (after > 0))
        Q_EMIT hasLinesChanged();
    if (before != after)
        Q_EMIT lineCountChanged();
}

void LogTabViewModel::toggleMark(int row) {
    lines_.toggleMark(row);
}

void LogTabViewModel::unmarkAll() {
    lines_.unmarkAll();
}

void LogTabViewModel::copyLine(int row) const {
    if (row >= 0 && row < lines_.rowCount())
        QGuiApplication::clipboard()->setText(QString::fromUtf8(lines_.text()->line(row)));
}

void LogTabViewModel::copyPath() const {
    QGuiApplication::clipboard()->setText(path_);
}

} // namespace zenlot
