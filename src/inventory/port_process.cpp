#include "inventory/port_process.h"

#include "inventory/process_names.h"

namespace zenlot {

PortProcess PortProcess::fromOccupiedPort(const OccupiedPort& record) {
    return {
        .id = Uuid::random(),
        .pid = record.pid,
        .name = record.processName,
        .displayName = makeDisplayName(record.executablePath, record.processName),
        .user = record.user,
        .fullCommand = record.executablePath,
        .proto = record.proto,
        .state = "LISTEN",
        .localAddress = "*:" + std::to_string(record.port),
        .port = record.port,
        .startTime = record.startTime,
    };
}

} // namespace zenlot
