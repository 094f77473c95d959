// zenlot: the application, in the status area and in its windows.
//
//     zenlot                  opens the main window
//     zenlot port://8080      looks a port up
//     zenlot --settings       opens the settings
//     zenlot --background     opens no window; what the login item does
#include "localization/translation.h"
#include "platform/linux/exit_deadline.h"
#include "platform/linux/session_bus.h"
#include "platform/linux/session_bus_application_instance.h"
#include "platform/linux/termination_signals.h"
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

} // namespace

int main(int argc, char** argv) {
    using namespace zenlot;
    TerminationSignals termination;
    const QStringList arguments = argumentsOf(argc, argv);
    // Before the application object, which takes the activation out of the environment. A second
    // start needs no display either.
    SessionBus bus;
    SessionBusApplicationInstance instance(bus);
    switch (instance.start(urisAmong(arguments), activationFromEnvironment())) {
    case StartOutcome::first:
    case StartOutcome::alone:
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
    zenlot.start(arguments.contains(QLatin1String(kBackgroundOption)) ? LaunchStyle::inBackground
                                                                      : LaunchStyle::withWindow);
    const int status = QApplication::exec();
    zenlot.finish();
    exitWithin(kLongestEnd, status);
    return status;
}
