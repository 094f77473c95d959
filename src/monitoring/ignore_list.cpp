#include "monitoring/ignore_list.h"

namespace zenlot {

bool matchesIgnoredName(const QString& name, const QString& entry) {
    if (name.isEmpty() || entry.isEmpty())
        return false;
    const QString lowerName = name.toLower();
    const QString lowerEntry = entry.toLower();
    return lowerName.contains(lowerEntry) || lowerEntry.contains(lowerName);
}

} // namespace zenlot
