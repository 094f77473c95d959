// zenlot-monitor: the background monitor of one user, without a window.
#include "background_monitor/background_monitor.h"
#include "background_monitor/container_keeper.h"
#include "monitoring/broadcast_names.h"
#include "platform/linux/session_bus.h"
#include "platform/linux/session_bus_broadcast_center.h"
#include "platform/linux/termination_signals.h"
#include "platform/linux/xdg_home_directories.h"

#include <QCoreApplication>
#include <QDBusMessage>

#include <cstdio>
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

int run(int argc, char** argv, BackgroundMonitor::Noticing noticing) {
    const QCoreApplication application(argc, argv);
    const TerminationSignals termination([] { QCoreApplication::quit(); });
    const HomeDirectories directories = xdgHomeDirectories();
    ContainerKeeper container(directories.stateHome);
    if (!container.isOurs()) {
        std::fputs("zenlot-monitor: another one is running for this user\n", stderr);
        return alreadyRunning;
    }
    makeMonitorLogDirectory(directories.home);
    AppLog log(monitorLogPath(directories.home), std::chrono::system_clock::now,
               AppLog::Author::backgroundMonitor);
    SessionBus bus;
    takeName(bus);
    QObject::connect(&bus, &SessionBus::connected, &bus, [&bus] { takeName(bus); });
    SessionBusBroadcastCenter broadcasts(bus);
    BackgroundMonitor monitor(container, directories, broadcasts, log, noticing);
    monitor.start();
    const int status = QCoreApplication::exec();
    monitor.stop();
    log.writeAppLog(QStringLiteral("background monitor stopped"));
    return status;
}

} // namespace
} // namespace zenlot

int main(int argc, char** argv) {
    using zenlot::BackgroundMonitor;
    const std::string_view word = argc == 2 ? argv[1] : "";
    if (argc == 1)
        return zenlot::run(argc, argv, BackgroundMonitor::Noticing::best);
    if (word == "--poll")
        return zenlot::run(argc, argv, BackgroundMonitor::Noticing::polling);
    if (word == "--version") {
        std::puts("zenlot-monitor " ZENLOT_VERSION);
        return zenlot::stopped;
    }
    std::FILE* output = word == "--help" ? stdout : stderr;
    std::fputs("Usage: zenlot-monitor [--poll | --version | --help]\n"
               "Publishes the listening ports and notices servers that can't have theirs.\n"
               "  --poll  don't ask the kernel for process events\n",
               output);
    return word == "--help" ? zenlot::stopped : zenlot::badUsage;
}
