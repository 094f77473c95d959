#include "monitoring/ignore_entries.h"

#include <algorithm>

namespace zenlot {
namespace {

bool precedes(qint64 left, qint64 right) {
    return left < right;
}

// The code units of UTF-16 would put characters beyond the first plane before some of it.
bool precedes(const QString& left, const QString& right) {
    return left.toUcs4() < right.toUcs4();
}

template <typename Entry>
void add(AppSettings& settings, const Entry& entry, QList<Entry> (AppSettings::*list)() const,
         void (AppSettings::*assign)(const QList<Entry>&)) {
    QList<Entry> entries = (settings.*list)();
    if (entries.contains(entry))
        return;
    entries.append(entry);
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& left, const Entry& right) { return precedes(left, right); });
    (settings.*assign)(entries);
}

} // namespace

void ignorePort(AppSettings& settings, qint64 port) {
    add(settings, port, &AppSettings::monitorIgnoredPorts, &AppSettings::setMonitorIgnoredPorts);
    add(settings, port, &AppSettings::conflictIgnoredPorts, &AppSettings::setConflictIgnoredPorts);
}

void ignoreProcess(AppSettings& settings, const QString& name) {
    add(settings, name, &AppSettings::monitorIgnoredApps, &AppSettings::setMonitorIgnoredApps);
    add(settings, name, &AppSettings::conflictIgnoredApps, &AppSettings::setConflictIgnoredApps);
}

} // namespace zenlot
