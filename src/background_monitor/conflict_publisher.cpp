#include "background_monitor/conflict_publisher.h"

#include "monitoring/broadcast_names.h"
#include "monitoring/shared_container.h"

#include <QRegularExpression>

#include <algorithm>
#include <string>
#include <utility>

namespace zenlot {
namespace {

// What people are told of a process that may not be looked into.
constexpr const char* kUnseenProcess = "Process";

std::string portFile(std::int64_t port) {
    return "conflict-" + std::to_string(port) + ".json";
}

// The line is read back, and a name must not pass for another part of it.
QString nameInLine(const std::string& name) {
    static const QRegularExpression special(QStringLiteral("[\\s,()]+"));
    return QString::fromStdString(name).replace(special, QStringLiteral("_"));
}

} // namespace

ConflictPublisher::ConflictPublisher(const ContainerWriter& container, BroadcastCenter& broadcasts,
                                     AppLog& log, Clock clock)
    : container_(container), broadcasts_(broadcasts), log_(log), clock_(std::move(clock)) {
    const auto text = SharedContainer::read(container.path(std::string(kConflictsFile)));
    records_ = decodeConflictRecords(text.value_or("[]")).value_or(std::vector<ConflictRecord>());
    if (!records_.empty()) {
        std::erase_if(records_, [now = clock_()](const ConflictRecord& record) {
            return record.detectedAt && *record.detectedAt > now;
        });
    }
    if (records_.size() > kMostRecords)
        records_.erase(records_.begin(), records_.end() - kMostRecords);
}

void ConflictPublisher::publish(const Verdict& verdict) {
    ConflictRecord record{verdict.port, verdict.holder.pid, verdict.holder.processName,
                          verdict.holder.displayName, clock_()};
    if (record.processName.empty())
        record.processName = kUnseenProcess;
    if (record.displayName.empty())
        record.displayName = record.processName;
    records_.push_back(record);
    while (records_.size() > kMostRecords) {
        const std::int64_t oldest = records_.front().port;
        records_.erase(records_.begin());
        if (std::ranges::find(records_, oldest, &ConflictRecord::port) == records_.end())
            container_.remove(portFile(oldest));
    }
    if (!write(record)) {
        unwritten_.push_back(std::move(record));
        if (unwritten_.size() > kMostRecords)
            unwritten_.erase(unwritten_.begin());
    }
}

void ConflictPublisher::publishUnwritten() {
    while (!unwritten_.empty() && write(unwritten_.front()))
        unwritten_.erase(unwritten_.begin());
}

// The files come before the broadcasts, which say "look again".
bool ConflictPublisher::write(const ConflictRecord& record) {
    if (!container_.replace(portFile(record.port), encodeConflictRecord(record)) ||
        !container_.replace(std::string(kConflictsFile), encodeConflictRecords(records_)))
        return false;
    log_.writeAppLog(QStringLiteral("broadcasting port %1, %2 (pid %3)")
                         .arg(QString::number(record.port), nameInLine(record.processName),
                              QString::number(record.pid)));
    broadcasts_.post(kConflictsUpdatedBroadcast);
    broadcasts_.post(conflictBroadcast(record.port));
    return true;
}

void ConflictPublisher::restore() {
    if (records_.empty())
        return;
    for (const ConflictRecord& record : records_)
        container_.replace(portFile(record.port), encodeConflictRecord(record));
    container_.replace(std::string(kConflictsFile), encodeConflictRecords(records_));
}

} // namespace zenlot
