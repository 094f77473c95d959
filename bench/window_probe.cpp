// zenlot-window-probe: starts the application as `zenlot` does, in whatever display there is, and
// measures how long people wait for its window: until it answers, until every port is listed, and
// the longest time during which it would not have answered.
//
//     zenlot-window-probe [REFRESHES [LISTENERS]]   how many more every other refresh finds
//     zenlot-window-probe --rounds COUNT    what is left behind by windows that were closed
//
// The exit status is 1 when a figure is above its limit, and 2 when nothing could be measured.
#include "platform/linux/session_bus.h"
#include "platform/linux/session_bus_application_instance.h"
#include "posix/file_descriptor.h"
#include "posix/heap.h"
#include "probe.h"
#include "shell/app/zenlot_app.h"
#include "shell/style/renderer.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTimer>

#include <netinet/in.h>
#include <sys/socket.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <vector>

namespace zenlot {
namespace {

using namespace std::chrono_literals;
// What a refresh sets off, such as icons that are found later, counts as part of it.
constexpr auto kAftermath = 150ms;
constexpr int kListeners = 50;
constexpr int kUnchangedRefreshes = 5;

// Without the toolkit, whose event loop would have to watch every one of them.
FileDescriptor listenSomewhere() {
    FileDescriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): how addresses are passed
    ::bind(socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address);
    ::listen(socket.get(), 1);
    return socket;
}

QQuickItem* viewOf(QQuickItem* root, const QAbstractItemModel* model) {
    if (root->inherits("QQuickListView") && root->property("model").value<QObject*>() == model)
        return root;
    for (QQuickItem* child : root->childItems()) {
        if (QQuickItem* found = viewOf(child, model))
            return found;
    }
    return nullptr;
}

class Probe final {
  public:
    // Returns whether everything could be measured.
    bool run(int refreshes, int listeners) {
        app_.start(LaunchStyle::withWindow);
        if (!waitUntil([this] { return app_.mainWindow() != nullptr; }))
            return false;
        QObject::connect(app_.mainWindow(), &QQuickWindow::frameSwapped, app_.mainWindow(),
                         [this] { ++frames_; });
        return measureStart() && measureRefreshes(refreshes, listeners) && measureUnchanged() &&
               measureScrolling();
    }

    // Opens and closes the main window and the settings so many times, and the welcome with them
    // where the user has not completed it.
    bool runRounds(int rounds) {
        QCoro::waitFor(app_.start(LaunchStyle::inBackground));
        for (int round = 1; round <= rounds; ++round) {
            app_.openMainWindow();
            app_.openSettings();
            if (!waitUntil([this] { return app_.contentViewModel() && isListed(); }))
                return false;
            turnFor(kAftermath);
            // From the event loop, where windows that are closed are deleted too.
            QTimer::singleShot(0ms, [] {
                for (QWindow* window : QGuiApplication::topLevelWindows())
                    window->close();
            });
            if (!waitUntil([this] { return app_.mainWindow() == nullptr; }))
                return false;
            turnFor(kAftermath);
            if (round == 1 || round == kWarmRounds || round == rounds)
                report_.add(
                    qPrintable(QStringLiteral("proportional set size after round %1").arg(round)),
                    proportionalMiB(), "MiB");
        }
        return true;
    }

    bool isWithinLimits() const { return report_.isWithinLimits(); }

  private:
    static constexpr int kWarmRounds = 20; // until caches are full

    bool isListed() {
        return app_.contentViewModel()->sidebar()->rowCount() > 0 &&
               !app_.contentViewModel()->isLoadingSidebar();
    }

    bool waitForFrame() const {
        const int before = frames_;
        return waitUntil([&] { return frames_ > before; });
    }

    bool measureStart() {
        if (!waitForFrame())
            return false;
        QApplication::processEvents();
        report_.add("start to a window that answers", age().count(), "ms", 200);
        if (!waitUntil([this] { return isListed(); }) || !waitForFrame())
            return false;
        report_.add("start to the full list in the window", age().count(), "ms", 1'500);
        report_.addGap("longest gap from the loaded program to there", heartbeat_.takeLongest(),
                       50);
        turnFor(kAftermath);
        report_.addGap("longest gap after it", heartbeat_.takeLongest(), 50);
        report_.add("rows of the sidebar", app_.contentViewModel()->sidebar()->rowCount(), "");
        report_.add("proportional set size", proportionalMiB(), "MiB", 55);
        return true;
    }

    // Every other refresh finds some ports more, and the ones between find them gone again.
    bool measureRefreshes(int count, int listeners) {
        std::vector<FileDescriptor> servers;
        Gap longest;
        Milliseconds together{0};
        for (int refresh = 0; refresh < count; ++refresh) {
            if (servers.empty()) {
                for (int each = 0; each < listeners; ++each)
                    servers.push_back(listenSomewhere());
            } else {
                servers.clear();
            }
            turnFor(kAftermath);
            heartbeat_.takeLongest();
            QElapsedTimer time;
            time.start();
            app_.contentViewModel()->loadOccupiedPorts();
            if (!waitUntil([this] { return isListed(); }))
                return false;
            together += std::chrono::nanoseconds(time.nsecsElapsed());
            turnFor(kAftermath);
            longest =
                std::max(longest, heartbeat_.takeLongest(),
                         [](const Gap& one, const Gap& other) { return one.wall < other.wall; });
        }
        report_.add("refresh, on average", together.count() / count, "ms");
        report_.addGap("longest gap in a refresh", longest, 50);
        return true;
    }

    bool measureUnchanged() {
        turnFor(kAftermath);
        app_.contentViewModel()->loadOccupiedPorts(); // the listeners of before are gone
        Milliseconds together{0};
        for (int refresh = 0; refresh <= kUnchangedRefreshes; ++refresh) {
            if (!waitUntil([this] { return isListed(); }))
                return false;
            turnFor(kAftermath);
            if (refresh == kUnchangedRefreshes)
                break;
            QElapsedTimer time;
            time.start();
            app_.contentViewModel()->loadOccupiedPorts();
            if (!waitUntil([this] { return isListed(); }))
                return false;
            together += std::chrono::nanoseconds(time.nsecsElapsed());
        }
        report_.add("refresh that finds nothing new, on average",
                    together.count() / kUnchangedRefreshes, "ms", 40);
        return true;
    }

    bool measureScrolling() {
        QQuickItem* view =
            viewOf(app_.mainWindow()->contentItem(), app_.contentViewModel()->sidebar());
        if (!view)
            return false;
        auto* content = view->property("contentItem").value<QQuickItem*>();
        heartbeat_.takeLongest();
        const int framesBefore = frames_;
        qsizetype most = 0;
        const auto end = [view] {
            return view->property("originY").toDouble() +
                   view->property("contentHeight").toDouble() - view->height();
        };
        // Not where the list stands already: nothing would change, and no frame would come.
        double y = view->property("originY").toDouble() + view->height() / 4;
        while (y < end()) {
            view->setProperty("contentY", y);
            y += view->height() / 4;
            if (!waitForFrame())
                return false;
            most = std::max(most, content->childItems().size());
        }
        turnFor(kAftermath);
        report_.add("frames of a scroll from end to end", frames_ - framesBefore, "");
        report_.addGap("longest gap in the scroll", heartbeat_.takeLongest(), 50);
        report_.add("rows that exist at most", static_cast<double>(most), "");
        report_.add("proportional set size at the end", proportionalMiB(), "MiB", 80);
        return true;
    }

    Heartbeat heartbeat_;
    int frames_{0};
    Report report_;
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
    const bool hasRounds = arguments.contains(u"--rounds"_qs);
    const int count = std::max(1, arguments.value(hasRounds ? 2 : 1, u"10"_qs).toInt());
    const int listeners = arguments.size() > 2 ? arguments[2].toInt() : zenlot::kListeners;

    zenlot::Probe probe;
    const bool isMeasured = hasRounds ? probe.runRounds(count) : probe.run(count, listeners);
    if (!isMeasured) {
        std::fputs("zenlot-window-probe: the window did not come so far\n", stderr);
        return 2;
    }
    return probe.isWithinLimits() ? 0 : 1;
}
