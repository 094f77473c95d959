// zenlot-monitor: the background monitor of one user, without a window.
#include "background_monitor/background_monitor.h"
#include "background_monitor/container_keeper.h"
#include "bindwatch/bindwatch_service.h"
#include "monitoring/broadcast_names.h"
#include "platform/linux/exit_deadline.h"
#include "platform/linux/session_bus.h"
#include "platform/linux/session_bus_broadcast_center.h"
#include "platform/linux/termination_signals.h"
#include "platform/linux/xdg_home_directories.h"

#include <QCoreApplication>
#include <QDBusMessage>

#include <cstddef>
#include <cstdio>
#include <span>
#include <string_view>

namespace zenlot {
namespace {

enum ExitStatus : int {
    stopped = 0,
    alreadyRunning = BackgroundMonitor::kAnotherRuns,
    badUsage = 2
};

// The signals of others about single ports then count for nothing. Nobody waits for the answer:
// while another program has the name the monitor does without.
void takeName(const SessionBus& bus) {
    constexpr uint kDoNotQueue = 4;
    const QString service = QStringLiteral("org.freedesktop.DBus");
    bus.connection().send(QDBusMessage::createMethodCall(service,
                                                         QStringLiteral("/org/freedesktop/DBus"),
                                                         service, QStringLiteral("RequestName"))
                          << QString(kMonitorBusName) << kDoNotQueue);
}

struct Options {
    BackgroundMonitor::Sources sources{.bindwatch = kBindwatchSocket};
    InstanceLock::Patience patience{InstanceLock::Patience::none};
};

int run(int argc, char** argv, const Options& options) {
    const QCoreApplication application(argc, argv);
    const HomeDirectories directories = xdgHomeDirectories();
    // Before the signals are handled, so that they can end the wait.
    ContainerKeeper container(directories.stateHome, options.patience);
    TerminationSignals termination(TerminationSignals::Children::none);
    termination.follow([] { QCoreApplication::quit(); });
    if (!container.isOurs()) {
        std::fputs("zenlot-monitor: another one is running for this user\n", stderr);
        return alreadyRunning;
    }
    AppLog log(monitorLogPath(directories.home), std::chrono::system_clock::now,
               AppLog::Author::backgroundMonitor);
    log.makeFolder();
    SessionBus bus;
    takeName(bus);
    QObject::connect(&bus, &SessionBus::connected, &bus, [&bus] { takeName(bus); });
    SessionBusBroadcastCenter broadcasts(bus);
    BackgroundMonitor monitor(container, directories, broadcasts, log, options.sources);
    monitor.start();
    const int status = QCoreApplication::exec();
    monitor.stop();
    log.writeAppLog(QStringLiteral("background monitor stopped"));
    exitWithin(kLongestEnd, status);
    return status;
}

} // namespace
} // namespace zenlot

int main(int argc, char** argv) {
    zenlot::Options options;
    const std::span words(argv, static_cast<std::size_t>(argc));
    for (std::size_t place = 1; place < words.size(); ++place) {
        const std::string_view word = words[place];
        if (word == "--poll") {
            options.sources.noticing = zenlot::BackgroundMonitor::Noticing::polling;
        } else if (word == "--bindwatch" && place + 1 < words.size()) {
            options.sources.bindwatch = words[++place];
        } else if (word == "--wait") {
            options.patience = zenlot::InstanceLock::Patience::endless;
        } else if (word == "--version" && argc == 2) {
            std::puts("zenlot-monitor " ZENLOT_VERSION);
            return zenlot::stopped;
        } else {
            const bool isAsked = word == "--help" && argc == 2;
            std::fputs(
                "Usage: zenlot-monitor [--poll] [--wait] [--bindwatch PATH] | --version | --help\n"
                "Publishes the listening ports and notices servers that can't have theirs.\n"
                "  --poll            don't ask the kernel for process events\n"
                "  --wait            while another one is running, wait until it ends\n"
                "  --bindwatch PATH  where zenlot-bindwatch tells of refused ports, instead of\n"
                "                    /run/zenlot/binds; empty to do without it\n",
                isAsked ? stdout : stderr);
            return isAsked ? zenlot::stopped : zenlot::badUsage;
        }
    }
    return zenlot::run(argc, argv, options);
}
