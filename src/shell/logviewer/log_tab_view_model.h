// What the Log tab shows and does: the lines of the monitor log, their marks, and the emptying of
// the file.
//
// While the tab is shown the size of the file is looked at every two seconds, and the file is read
// again when that has changed; otherwise nothing happens. A file that can't be read shows no lines
// and is no error. Main thread only; the disk is touched on a worker thread, one thing after the
// other. The destructor stops a reading that is under way there, and waits for a clearing.
//
//     LogTabViewModel viewModel(monitorLogPath(home), log);
//     viewModel.appear();
#pragma once

#include "settings/app_log.h"
#include "shell/logviewer/log_line_model.h"
#include "shell/logviewer/log_text.h"
#include "workers/worker_threads.h"

#ifndef Q_MOC_RUN // which can't read the coroutine headers
#include <QCoroTask>
#endif
#include <QObject>
#include <QString>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

#include <atomic>
#include <chrono>
#include <memory>

namespace zenlot {

class LogTabViewModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application owns it")

    Q_PROPERTY(QString path READ path CONSTANT)
    // Of how many megabytes the log begins anew.
    Q_PROPERTY(int mostMegabytes READ mostMegabytes CONSTANT)
    Q_PROPERTY(zenlot::LogLineModel* lines READ lines CONSTANT)
    Q_PROPERTY(bool hasLines READ hasLines NOTIFY hasLinesChanged)
    Q_PROPERTY(bool isReading READ isReading NOTIFY isReadingChanged)
    Q_PROPERTY(bool hasMarks READ hasMarks NOTIFY hasMarksChanged)

  public:
    static constexpr std::chrono::seconds kPollInterval{2};

    // `log` must outlive the object.
    LogTabViewModel(QString path, AppLog& log, QObject* parent = nullptr);
    ~LogTabViewModel() override;

    QString path() const { return path_; }
    int mostMegabytes() const { return static_cast<int>(AppLog::kLongestLog / 1024 / 1024); }
    LogLineModel* lines() { return &lines_; }
    bool hasLines() const { return lines_.rowCount() > 0; }
    bool hasMarks() const { return lines_.hasMarks(); }
    // For the first time since the tab is shown. At the very first nothing is known of the log yet,
    // not even that it is empty.
    bool isReading() const { return isReading_; }
    qint64 lastSize() const { return lines_.text()->size(); }

    // The tab is shown, or not any more.
    Q_INVOKABLE void appear();
    Q_INVOKABLE void disappear();

    void reloadLog();
    void pollLogSize();

    Q_INVOKABLE void clearLog();
    Q_INVOKABLE void toggleMark(int row);
    Q_INVOKABLE void unmarkAll();

    Q_INVOKABLE void copyLine(int row) const;
    Q_INVOKABLE void copyPath() const;

  Q_SIGNALS:
    void hasLinesChanged();
    void hasMarksChanged();
    void isReadingChanged();

    // The number of lines is another one now.
    void lineCountChanged();

  private:
    // Runs the work behind all that was asked for before, and `apply` with its result here.
    template <typename Work, typename Apply>
    QCoro::Task<> runOnWorker(Work work, Apply apply);
    void show(const std::shared_ptr<const LogText>& text, qint64 equalLines);

    QString path_;
    AppLog& log_;
    LogLineModel lines_;
    QTimer timer_;
    bool isPolling_{false};
    bool isReading_{false};
    bool isReloading_{false};
    bool isReloadDue_{false};
    int textNumber_{0}; // which of all that have been shown it is that is shown now
    std::atomic<bool> isStopped_{false};
    WorkerThreads worker_{1}; // the last member: its end waits for what uses the others
};

} // namespace zenlot
