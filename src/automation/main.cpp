// zenlot-automation: answers questions about ports for the desktop's search. The session bus
// starts it when somebody asks, and it ends when nobody has asked for half a minute.
//
//     zenlot-automation --idle-seconds=5    stays for a shorter while
#include "automation/automation_service.h"
#include "inventory/linux/linux_process_tables.h"
#include "inventory/linux/processors.h"
#include "localization/translation.h"
#include "platform/linux/exit_deadline.h"
#include "platform/linux/xdg_home_directories.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv) {
    using namespace zenlot;
    using namespace Qt::StringLiterals;
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(ZENLOT_VERSION));

    AutomationTimes times;
    QCommandLineParser commandLine;
    commandLine.setApplicationDescription(
        u"Answers questions about ports on the session bus, which starts it."_s);
    const QCommandLineOption idleSeconds(
        u"idle-seconds"_s, u"End when nobody has asked for this long."_s, u"seconds"_s,
        QString::number(std::chrono::duration_cast<std::chrono::seconds>(times.idle).count()));
    commandLine.addOption(idleSeconds);
    commandLine.addHelpOption();
    commandLine.addVersionOption();
    commandLine.process(application);
    bool isNumber = false;
    times.idle = std::chrono::seconds(commandLine.value(idleSeconds).toUShort(&isNumber));
    if (!isNumber || !commandLine.positionalArguments().isEmpty()) {
        std::fputs(qPrintable(commandLine.helpText()), stderr);
        return 2;
    }

    const Translation translation;
    const LinuxProcessTables tables;
    const PortScanner scanner(tables, isPortInUse, availableProcessors());
    PortAnswers answers(scanner, SharedContainer(xdgHomeDirectories().stateHome));
    AutomationService service(QDBusConnection::sessionBus(), answers, times);
    QObject::connect(&service, &AutomationService::finished, &application, &QCoreApplication::quit);
    if (!service.start()) {
        std::fputs(
            "zenlot-automation: can't be reached on the session bus; is it running already?\n",
            stderr);
        return 1;
    }
    const int status = QCoreApplication::exec();
    exitWithin(kLongestEnd, status);
    return status;
}
