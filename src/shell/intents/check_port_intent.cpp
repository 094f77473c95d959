#include "shell/intents/check_port_intent.h"

#include "text/display_line.h"

#include <QCoreApplication>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

QString translated(const char* key) {
    return QCoreApplication::translate("CheckPortIntent", key);
}

} // namespace

QString CheckPortIntent::perform(const PortScanner& scanner,
                                 const std::vector<OccupiedPort>& published) const {
    return checkPortDialog(portNumber, isValidPort(portNumber)
                                           ? processesOnPort(scanner, portNumber, published)
                                           : std::vector<PortProcess>());
}

QString CheckPortIntent::title() {
    return translated(QT_TRANSLATE_NOOP("CheckPortIntent", "Check Port"));
}

QString CheckPortIntent::portNumberTitle() {
    return translated(QT_TRANSLATE_NOOP("CheckPortIntent", "Port Number"));
}

QString CheckPortIntent::portNumberDescription() {
    return translated(QT_TRANSLATE_NOOP("CheckPortIntent", "A port number between 1 and 65535"));
}

QString CheckPortIntent::valueRequestDialog() {
    return translated(QT_TRANSLATE_NOOP("CheckPortIntent", "Which port would you like to check?"));
}

QString checkPortDialog(std::int64_t portNumber, const std::vector<PortProcess>& owners) {
    if (!isValidPort(portNumber))
        return translated(QT_TRANSLATE_NOOP(
            "CheckPortIntent", "Please enter a valid port number between 1 and 65535."));
    const QString number = QString::number(portNumber);
    if (owners.empty())
        return translated(
                   QT_TRANSLATE_NOOP("CheckPortIntent", "Port %1 is free — nothing is using it."))
            .arg(number);

    QStringList names;
    for (const PortProcess& owner : owners) {
        const QString name = displayLine(owner.displayName);
        if (owner.pid > 0)
            names.append(u"%2 (PID %1)"_s.arg(owner.pid).arg(name));
        else
            names.append(name.isEmpty()
                             ? translated(QT_TRANSLATE_NOOP("CheckPortIntent", "Unknown"))
                             : name);
    }
    // The names may hold anything, also what looks like a place for an argument.
    return translated(QT_TRANSLATE_NOOP("CheckPortIntent", "Port %1 is used by: %2"))
        .arg(number, names.join(u", "_s));
}

QString ZenlotAppShortcuts::shortTitle() {
    return CheckPortIntent::title();
}

QString ZenlotAppShortcuts::systemImage() {
    return u"network"_s;
}

QStringList ZenlotAppShortcuts::phrases(const QString& applicationName) {
    return {
        translated(QT_TRANSLATE_NOOP("CheckPortIntent", "Check a port in %1")).arg(applicationName),
        translated(QT_TRANSLATE_NOOP("CheckPortIntent", "What is using a port in %1"))
            .arg(applicationName),
        translated(QT_TRANSLATE_NOOP("CheckPortIntent", "Port lookup in %1")).arg(applicationName),
    };
}

} // namespace zenlot
