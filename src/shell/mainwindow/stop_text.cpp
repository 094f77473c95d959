#include "shell/mainwindow/stop_text.h"

#include "text/display_line.h"

#include <QCoreApplication>
#include <QStringList>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kLongestWord = 80;

QString words(const char* text) {
    return QCoreApplication::translate("StopText", text);
}

QString shown(const std::string& text) {
    return displayLine(text, kLongestWord);
}

QString containerText(const StopPlan& plan) {
    const QString name = plan.container.image.empty()
                             ? shown(plan.name)
                             : u"%1 (%2)"_s.arg(shown(plan.name), shown(plan.container.image));
    return plan.container.composeProject.empty()
               ? words(QT_TRANSLATE_NOOP("StopText", "Stops container %1.")).arg(name)
               : words(QT_TRANSLATE_NOOP("StopText", "Stops container %1 of compose project %2."))
                     .arg(name, shown(plan.container.composeProject));
}

QString refusalText(const StopPlan& plan) {
    switch (plan.refusal) {
    case StopPlan::Refusal::workplace:
        return words(QT_TRANSLATE_NOOP("StopText",
                                       "%1 is a program that people work in or that the session "
                                       "needs; it is not stopped for a port."))
            .arg(shown(plan.name));
    case StopPlan::Refusal::anotherUser:
        return words(QT_TRANSLATE_NOOP("StopText",
                                       "It belongs to another user, and to no service or container "
                                       "that could be stopped."));
    case StopPlan::Refusal::none:
    case StopPlan::Refusal::unknown:
        break;
    }
    return words(QT_TRANSLATE_NOOP("StopText", "Nobody can tell what would have to be stopped."));
}

QString whatEnds(const StopPlan& plan) {
    QStringList units;
    for (const Unit& unit : plan.units)
        units.append(shown(unit.name));
    switch (plan.kind) {
    case StopPlan::Kind::none:
        break;
    case StopPlan::Kind::container:
        return containerText(plan);
    case StopPlan::Kind::userUnit:
        return words(QT_TRANSLATE_NOOP("StopText", "Stops %1, one of your services."))
            .arg(units.join(u", "_s));
    case StopPlan::Kind::systemUnit:
        return words(QT_TRANSLATE_NOOP("StopText", "Stops %1, a service of the system."))
            .arg(units.join(u", "_s));
    case StopPlan::Kind::processes: {
        const QString name = shown(plan.name);
        const QString pid = QString::number(plan.processes.front().pid);
        return plan.processes.size() == 1
                   ? words(QT_TRANSLATE_NOOP("StopText", "Stops %1 (PID %2).")).arg(name, pid)
                   : words(
                         QT_TRANSLATE_NOOP(
                             "StopText", "Stops %1 (PID %2), which started the server on port %3."))
                         .arg(name, pid, QString::number(plan.port));
    }
    }
    return refusalText(plan);
}

} // namespace

QString stopPlanText(const StopPlan& plan) {
    QStringList sentences{whatEnds(plan)};
    if (plan.kind == StopPlan::Kind::none)
        return sentences.front();
    if (plan.clients == 1)
        sentences.append(words(QT_TRANSLATE_NOOP("StopText", "1 client is connected.")));
    else if (plan.clients > 1)
        sentences.append(words(QT_TRANSLATE_NOOP("StopText", "%1 clients are connected."))
                             .arg(QString::number(plan.clients)));
    if (!plan.otherPorts.empty()) {
        QStringList ports;
        for (const std::uint16_t port : plan.otherPorts)
            ports.append(QString::number(port));
        sentences.append(words(QT_TRANSLATE_NOOP("StopText", "Ports that go with it: %1."))
                             .arg(ports.join(u", "_s)));
    }
    if (!plan.supervisor.empty())
        sentences.append(words(QT_TRANSLATE_NOOP("StopText", "%1 may start it again."))
                             .arg(shown(plan.supervisor)));
    return sentences.join(u' ');
}

QString stopResultText(const StopPlan& plan, const StopResult& result) {
    const QString name = shown(plan.name);
    const QString port = QString::number(plan.port);
    switch (result.outcome) {
    case StopResult::Outcome::free:
        return {};
    case StopResult::Outcome::stillHeld:
        return words(QT_TRANSLATE_NOOP("StopText", "%1 has been asked to end and still holds port "
                                                   "%2. End it by force?"))
            .arg(name, port);
    case StopResult::Outcome::takenAgain: {
        const Origin& holder = result.holders.front();
        QString taker = holder.processName.empty()
                            ? words(QT_TRANSLATE_NOOP("StopText", "another process"))
                            : shown(holder.processName);
        if (holder.process.pid != 0)
            taker += u" (PID %1)"_s.arg(QString::number(holder.process.pid));
        return words(QT_TRANSLATE_NOOP("StopText", "%1 has ended, and %2 has taken port %3 again."))
            .arg(name, taker, port);
    }
    case StopResult::Outcome::failed:
        break;
    }
    return words(QT_TRANSLATE_NOOP("StopText", "%1 could not be stopped: %2"))
        .arg(name, displayLine(result.reason));
}

} // namespace zenlot
