// zenlot: the application, in the status area and in its windows.
//
//     zenlot                  opens the main window
//     zenlot port://8080      looks a port up
//     zenlot --check-port     opens the main window, ready for a port
//     zenlot --settings       opens the settings
//     zenlot --background     opens no window; what the login item does
//     zenlot --quit           ends the one that runs
//     zenlot --help, --version
#include "localization/translation.h"
#include "platform/linux/exit_deadline.h"
#include "platform/linux/session_bus.h"
#include "platform/linux/session_bus_application_instance.h"
#include "platform/linux/termination_signals.h"
#include "posix/heap.h"
#include "shell/app/zenlot_app.h"
#include "shell/style/renderer.h"

#include <QApplication>
#include <QLoggingCategory>

#include <cstdio>

namespace {

QStringList argumentsOf(int argc, char** argv) {
    QStringList arguments;
    for (int index = 1; index < argc; ++index)
        arguments.append(QString::fromLocal8Bit(argv[index]));
    return arguments;
}

bool answersInTerminal(const QStringList& arguments) {
    if (arguments.contains(QLatin1String("--version"))) {
        std::puts("zenlot " ZENLOT_VERSION);
        return true;
    }
    if (!arguments.contains(QLatin1String("--help")) && !arguments.contains(QLatin1String("-h")))
        return false;
    std::puts(
        "Usage: zenlot [OPTION | port://PORT]\n"
        "Shows which process listens on which TCP port. Without an option it opens its window.\n"
        "  --check-port  open the window, ready for a port\n"
        "  --settings    open the settings\n"
        "  --background  open no window; stay in the status area and watch\n"
        "  --quit        end the Zenlot that runs in this session\n"
        "  --version     tell the version\n"
        "  --help        this text\n"
        "zenlotctl lists and checks ports in a terminal.");
    return true;
}

} // namespace

int main(int argc, char** argv) {
    using namespace zenlot;
    keepHeapSmall();
    TerminationSignals termination;
    const QStringList arguments = argumentsOf(argc, argv);
    // Whoever asks in a terminal may have no display.
    if (answersInTerminal(arguments))
        return 0;
    // Before the application object, which takes the activation out of the environment. A second
    // start needs no display either.
    SessionBus bus;
    SessionBusApplicationInstance instance(bus);
    switch (instance.start(urisAmong(arguments), activationFromEnvironment())) {
    case StartOutcome::first:
    case StartOutcome::alone:
        if (arguments.contains(QLatin1String("--quit")))
            return 0;
        break;
    case StartOutcome::handedOver:
        return 0;
    case StartOutcome::notAnswered:
        std::fputs("zenlot: another Zenlot runs in this session and does not answer.\n", stderr);
        return 1;
    }

    // The other backend of QtMultimedia ends the program where its plugins are missing.
    qputenv("QT_MEDIA_BACKEND", "ffmpeg");

    // What it says about every graphics card that is not there.
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));

    QApplication application(argc, argv);
    // No display name: Qt would put it behind every window's title.
    QApplication::setApplicationName(QStringLiteral("zenlot"));
    QApplication::setApplicationVersion(QStringLiteral(ZENLOT_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("dev.quorvane.zenlot"));
    chooseRenderer();

    const Translation translation;
    ZenlotApp zenlot(bus, instance);
    termination.follow([] { QCoreApplication::quit(); });
    zenlot.start(arguments.contains(kBackgroundOption) ? LaunchStyle::inBackground
                                                       : LaunchStyle::withWindow);
    const int status = QApplication::exec();
    zenlot.finish();
    exitWithin(kLongestEnd, status);
    return status;
}
