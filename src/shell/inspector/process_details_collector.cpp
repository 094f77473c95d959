#include "shell/inspector/process_details_collector.h"

#include "inventory/process_identity.h"
#include "shell/inspector/process_details_text.h"

#include <QDateTime>

#include <utility>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

// The same form as the address of a listening port: the address itself is of no interest.
QString portText(std::uint16_t port) {
    return u"*:"_s + QString::number(port);
}

NetworkConnection connectionOf(const TcpSocket& socket) {
    return {Uuid::random(), socket.family == AddressFamily::ipv6 ? u"TCP6"_s : u"TCP4"_s,
            portText(socket.localPort),
            socket.foreignPort == 0 ? QString() : portText(socket.foreignPort),
            tcpStateText(socket.state)};
}

} // namespace

ProcessDetailsCollector::ProcessDetailsCollector(const ProcessInspector& inspector, Clock clock,
                                                 const QLocale& locale, const QTimeZone& timeZone)
    : inspector_(inspector), clock_(std::move(clock)), locale_(locale), timeZone_(timeZone) {}

ProcessDetails ProcessDetailsCollector::collectProcessDetails(qint64 pid) const {
    ProcessDetails details;
    const ProcessId process = processIdOf(pid);
    if (process == 0)
        return details;
    const ProcessFacts facts = inspector_.inspect(process);
    if (const std::optional<TaskInfo>& task = facts.task) {
        details.parentPID = task->parentPid;
        details.parentName = QString::fromStdString(facts.parentName);
        details.residentMB = residentSizeText(task->residentBytes);
        details.virtualMB = virtualSizeText(task->virtualBytes);
        details.memPercent = memoryShareText(task->residentBytes, inspector_.physicalMemoryBytes());
        details.processStatus = processStatusText(task->state);
        if (task->startTime.count() != 0) {
            const auto now =
                std::chrono::duration_cast<std::chrono::seconds>(clock_().time_since_epoch());
            const std::chrono::seconds elapsed = now - task->startTime;
            details.startDate = dateText(task->startTime);
            details.elapsed = elapsedText(elapsed);
            if (task->cpuTime)
                details.cpuPercent = cpuShareText(*task->cpuTime, elapsed);
        }
    }
    details.openFileCount = facts.descriptorCount;
    details.networkConnections.reserve(static_cast<qsizetype>(facts.tcpSockets.size()));
    for (const TcpSocket& socket : facts.tcpSockets)
        details.networkConnections.append(connectionOf(socket));
    return details;
}

QString ProcessDetailsCollector::dateText(std::chrono::seconds sinceEpoch) const {
    const QDateTime date = timeZone_.isValid()
                               ? QDateTime::fromSecsSinceEpoch(sinceEpoch.count(), timeZone_)
                               : QDateTime::fromSecsSinceEpoch(sinceEpoch.count());
    return locale_.toString(date, u"MMM d HH:mm:ss yyyy"_s);
}

} // namespace zenlot
