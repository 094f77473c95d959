// The broadcasts with which the background monitor announces new file contents. See
// monitoring/shared_container.h for the files.
#pragma once

#include <QLatin1StringView>
#include <QString>

#include <cstdint>

namespace zenlot {

// The background monitor owns this name on the session bus for as long as it runs.
inline constexpr QLatin1StringView kMonitorBusName{"dev.quorvane.zenlot.Monitor"};

// The list of ports was rewritten.
inline constexpr QLatin1StringView kPortsUpdatedBroadcast{"dev.quorvane.zenlot.portsUpdated"};

// The list of conflicts was rewritten.
inline constexpr QLatin1StringView kConflictsUpdatedBroadcast{
    "dev.quorvane.zenlot.conflictsUpdated"};

// There is a conflict on one port.
inline QString conflictBroadcast(std::int64_t port) {
    return QLatin1StringView("dev.quorvane.zenlot.conflict.") + QString::number(port);
}

} // namespace zenlot
