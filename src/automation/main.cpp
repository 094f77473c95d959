// zenlot-automation: answers questions about ports for the desktop's search. The session bus
// starts it when somebody asks, and it ends when nobody has asked for half a minute.
#include "automation/automation_service.h"
#include "inventory/linux/linux_process_tables.h"
#include "inventory/linux/processors.h"
#include "platform/linux/xdg_home_directories.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv) {
    using namespace zenlot;
    QCoreApplication application(argc, argv);
    const LinuxProcessTables tables;
    const PortScanner scanner(tables, isPortInUse, availableProcessors());
    PortAnswers answers(scanner, SharedContainer(xdgHomeDirectories().stateHome));
    AutomationService service(QDBusConnection::sessionBus(), answers);
    if (!service.start()) {
        std::fputs(
            "zenlot-automation: can't be reached on the session bus; is it running already?\n",
            stderr);
        return 1;
    }
    QObject::connect(&service, &AutomationService::becameIdle, &application,
                     &QCoreApplication::quit);
    return QCoreApplication::exec();
}
