// zenlot-log-probe: how the Log tab of the settings bears a log of many megabytes. It starts the
// application as `zenlot` does, in whatever display there is, and does with the tab what people do.
// The log is written into the home directory, which must be one that nobody needs.
//
//     zenlot-log-probe [MEGABYTES]
//
// The exit status is 1 when a figure is above its limit, and 2 when nothing could be measured.
#include "platform/linux/session_bus.h"
#include "platform/linux/session_bus_application_instance.h"
#include "posix/heap.h"
#include "probe.h"
#include "settings/app_log.h"
#include "shell/app/zenlot_app.h"
#include "shell/logviewer/log_tab_view_model.h"
#include "shell/style/renderer.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>

namespace zenlot {
namespace {

using namespace std::chrono_literals;

// A turn of the poll, and what a reading sets off.
constexpr auto kPoll = 2s + 1500ms;
constexpr auto kAftermath = 500ms;
constexpr double kMegabyte = 1'000'000;
constexpr int kLogTab = 2;

std::string line(qint64 number) {
    const auto n = static_cast<unsigned>(number);
    std::array<char, 200> text{};
    const std::array messages{
        "[zenlot-daemon] attempt of node (pid %u) on port %u",
        "[zenlot-daemon] listening: python3 (pid %u) on port %u",
        "[zenlot-app] conflict records loaded count=%u fresh=%u",
        "[zenlot-daemon] broadcasting port 3000, node (pid %u) after %u ms",
        "[zenlot-app] legacy conflict ignored port=%u: stale, the next one in %u",
        "[zenlot-daemon] process exited pid=%u port=%u",
        "[zenlot-daemon] error: can't read the descriptors of %u: it ended %u ms ago",
        "[zenlot-app] port monitor started at poll %u with %u listeners",
    };
    const int head = std::snprintf(text.data(), text.size(), "2026-11-%02uT%02u:%02u:%02uZ ",
                                   1 + n / 86'400 % 28, n / 3600 % 24, n / 60 % 60, n % 60);
    std::snprintf(text.data() + head, text.size() - static_cast<std::size_t>(head),
                  messages.at(n % messages.size()), 1000 + n % 30'000, 3000 + n % 6000);
    return text.data();
}

// Returns how many lines it took.
qint64 writeLog(const QString& path, double bytes, qint64 firstNumber) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return 0;
    qint64 number = firstNumber;
    for (double written = 0; written < bytes; ++number) {
        const std::string text = line(number) + '\n';
        file.write(text.data(), static_cast<qint64>(text.size()));
        written += static_cast<double>(text.size());
    }
    return number - firstNumber;
}

void appendLine(const QString& path) {
    QFile file(path);
    if (file.open(QIODevice::Append))
        file.write("2026-11-30T12:00:00Z [zenlot-daemon] one more\n");
}

double residentMiB(const char* which) {
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& each : file.readAll().split('\n')) {
        if (each.startsWith(which))
            return each.simplified().split(' ').value(1).toDouble() / 1024;
    }
    return 0;
}

void forgetPeak() {
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly))
        file.write("5");
}

QQuickWindow* settingsWindow() {
    for (QWindow* window : QGuiApplication::topLevelWindows()) {
        if (window->objectName() == u"settings")
            return qobject_cast<QQuickWindow*>(window);
    }
    return nullptr;
}

QObject* holderOf(QQuickItem* root, const char* property) {
    if (root->metaObject()->indexOfProperty(property) >= 0)
        return root;
    for (QQuickItem* child : root->childItems()) {
        if (QObject* found = holderOf(child, property))
            return found;
    }
    return nullptr;
}

class Probe final {
  public:
    explicit Probe(double megabytes) : bytes_(megabytes * kMegabyte) {}

    // Returns whether everything could be measured.
    bool run() {
        QDir().mkpath(QFileInfo(path_).path());
        const qint64 lines = writeLog(path_, bytes_, 0);
        QCoro::waitFor(app_.start(LaunchStyle::inBackground));
        turnFor(kAftermath);
        if (lines == 0 || !openSettings())
            return false;
        report_.add("lines", static_cast<double>(lines), "");
        return measureOpening() && measureGrowth() && measureScrolling() && measureMarks() &&
               measureTabs() && measureReplacement() && measureClear() && measureClosing();
    }

    bool isWithinLimits() const { return report_.isWithinLimits(); }

  private:
    bool openSettings() {
        app_.openSettings();
        if (!waitUntil([] { return settingsWindow() != nullptr; }))
            return false;
        window_ = settingsWindow();
        QObject::connect(window_, &QQuickWindow::frameSwapped, window_, [this] { ++frames_; });
        tabs_ = holderOf(window_->contentItem(), "selectedTab");
        view_ = window_->findChild<QQuickItem*>(QStringLiteral("logLines"));
        viewModel_ = window_->property("logViewModel").value<LogTabViewModel*>();
        turnFor(kAftermath);
        return tabs_ && view_ && viewModel_;
    }

    bool waitForFrame() const {
        const int before = frames_;
        window_->requestUpdate();
        return waitUntil([&] { return frames_ > before; });
    }

    bool waitForLines(const std::function<bool(int)>& isReached) {
        return waitUntil([&] { return isReached(viewModel_->lines()->rowCount()); });
    }

    void addGap(const char* what) { report_.addGap(what, heartbeat_.takeLongest(), 50); }

    // The limit of three times the file holds for the peak too.
    void addMemory(const char* what) {
        report_.add(what, (proportionalMiB() - proportionalBefore_) * 1024 * 1024 / bytes_,
                    "x file", 3);
        report_.add("    at the peak",
                    (residentMiB("VmHWM:") - residentBefore_) * 1024 * 1024 / bytes_, "x file", 3);
        forgetPeak();
        heartbeat_.takeLongest(); // the memory of a process takes time to be counted
    }

    bool measureOpening() {
        proportionalBefore_ = proportionalMiB();
        residentBefore_ = residentMiB("VmRSS:");
        report_.add("proportional set size before", proportionalBefore_, "MiB");
        forgetPeak();
        heartbeat_.takeLongest();
        QElapsedTimer time;
        time.start();
        tabs_->setProperty("selectedTab", kLogTab);
        if (!waitForLines([](int count) { return count > 0; }) || !waitForFrame())
            return false;
        report_.add("opening the tab until rows are on screen", static_cast<double>(time.elapsed()),
                    "ms", 1000);
        turnFor(kAftermath);
        addGap("longest gap in opening");
        addMemory("memory for the log");
        return true;
    }

    bool measureGrowth() {
        constexpr int kTimes = 5;
        double together = 0;
        for (int turn = 0; turn < kTimes; ++turn) {
            const int before = viewModel_->lines()->rowCount();
            QElapsedTimer time;
            time.start();
            appendLine(path_);
            if (!waitForLines([before](int count) { return count > before; }) || !waitForFrame())
                return false;
            together += static_cast<double>(time.elapsed());
            turnFor(kAftermath);
        }
        report_.add("appended line until it is shown, on average", together / kTimes, "ms");
        addGap("longest gap while the file grows");
        addMemory("memory after it");
        return true;
    }

    bool measureScrolling() {
        qsizetype most = 0;
        const auto* content = view_->property("contentItem").value<QQuickItem*>();
        const auto goTo = [&](double y) {
            view_->setProperty("contentY", y);
            const bool isShown = waitForFrame();
            most = std::max(most, content->childItems().size());
            return isShown;
        };
        for (int frame = 0; frame < 200; ++frame) {
            if (!goTo(view_->property("contentY").toDouble() - view_->height() / 3))
                return false;
        }
        addGap("longest gap in a scroll by thirds of the view");
        // As somebody drags the bar from the end to the start.
        for (int step = 100; step-- > 0;) {
            const double start = view_->property("originY").toDouble();
            const double way = view_->property("contentHeight").toDouble() - view_->height();
            if (!goTo(start + way * step / 100))
                return false;
        }
        addGap("longest gap in a scroll from end to start");
        for (int page = 0; page < 50; ++page) {
            QMetaObject::invokeMethod(view_, "goByPage", Q_ARG(bool, true));
            if (!waitForFrame())
                return false;
        }
        addGap("longest gap in going page by page");
        for (const int row : {0, viewModel_->lines()->rowCount() - 1, 0}) {
            QMetaObject::invokeMethod(view_, "goTo", Q_ARG(int, row));
            if (!waitForFrame())
                return false;
        }
        addGap("longest gap in Home and End");
        report_.add("rows that exist at most", static_cast<double>(most), "");
        addMemory("memory after scrolling");
        return true;
    }

    bool measureMarks() {
        constexpr int kMarks = 200;
        const int count = viewModel_->lines()->rowCount();
        for (int mark = 0; mark < kMarks; ++mark) {
            viewModel_->toggleMark(static_cast<int>(qint64{count} * mark / kMarks));
            QApplication::processEvents();
        }
        waitForFrame();
        addGap("longest gap in setting marks");
        appendLine(path_);
        waitForLines([count](int now) { return now > count; });
        turnFor(kAftermath);
        addGap("longest gap in reading with marks");
        viewModel_->unmarkAll();
        waitForFrame();
        addGap("longest gap in taking all marks off");
        return true;
    }

    bool measureTabs() {
        for (const int tab : {0, kLogTab, 1, kLogTab}) {
            tabs_->setProperty("selectedTab", tab);
            turnFor(kAftermath);
        }
        addGap("longest gap in going through the tabs");
        addMemory("memory after it");
        return true;
    }

    // By another log of the same length, in which every line is another one.
    bool measureReplacement() {
        writeLog(path_ + QStringLiteral(".new"), bytes_ * 0.9, 7);
        const int before = viewModel_->lines()->rowCount();
        std::filesystem::rename((path_ + QStringLiteral(".new")).toStdString(),
                                path_.toStdString());
        heartbeat_.takeLongest(); // it was this thread that wrote the file
        if (!waitForLines([before](int count) { return count < before; }))
            return false;
        turnFor(kPoll);
        addGap("longest gap in a replacement");
        addMemory("memory after it");
        return true;
    }

    bool measureClear() {
        viewModel_->clearLog();
        if (!waitForLines([](int count) { return count == 1; }))
            return false;
        turnFor(kPoll);
        addGap("longest gap in clearing");
        addMemory("memory after it");
        return true;
    }

    // Once with all of the log shown, and once while it is read.
    bool measureClosing() {
        for (const bool isReadBefore : {true, false}) {
            writeLog(path_, bytes_, 0);
            const qint64 before = viewModel_ ? viewModel_->lines()->rowCount() : 0;
            if (!window_) {
                if (!openSettings())
                    return false;
                tabs_->setProperty("selectedTab", kLogTab);
            } else if (isReadBefore &&
                       !waitForLines([before](int count) { return count > before; })) {
                return false;
            }
            turnFor(isReadBefore ? std::chrono::milliseconds(kAftermath) : 30ms);
            heartbeat_.takeLongest();
            QTimer::singleShot(0, [] { settingsWindow()->close(); });
            if (!waitUntil([] { return settingsWindow() == nullptr; }))
                return false;
            window_ = nullptr;
            turnFor(kAftermath);
            addGap(isReadBefore ? "longest gap in closing the window"
                                : "longest gap in closing it while the log is read");
        }
        addMemory("memory without the window");
        return true;
    }

    double bytes_;
    QString path_{monitorLogPath(QDir::homePath())};
    QQuickWindow* window_{nullptr};
    QObject* tabs_{nullptr};
    QQuickItem* view_{nullptr};
    QPointer<LogTabViewModel> viewModel_;
    double proportionalBefore_{0};
    double residentBefore_{0};
    Report report_;
    Heartbeat heartbeat_;
    int frames_{0};
    SessionBus bus_;
    SessionBusApplicationInstance instance_{bus_};
    ZenlotApp app_{bus_, instance_};
};

} // namespace
} // namespace zenlot

int main(int argc, char** argv) {
    zenlot::keepHeapSmall();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zenlot"));
    zenlot::chooseRenderer();
    QApplication::setQuitOnLastWindowClosed(false);
    qputenv("QT_MEDIA_BACKEND", "ffmpeg");
    const QStringList arguments = QApplication::arguments();

    zenlot::Probe probe(std::max(1, arguments.value(1, QStringLiteral("200")).toInt()));
    if (!probe.run()) {
        std::fputs("zenlot-log-probe: the tab did not come so far\n", stderr);
        return 2;
    }
    return probe.isWithinLimits() ? 0 : 1;
}
