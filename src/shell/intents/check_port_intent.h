// "Check Port": the one question that can be put to Zenlot from anywhere, and its answer in a
// sentence. The desktop's own search, its voice or a script asks; no window opens.
//
// The logic is pure and any thread may use it. Texts come in the user's language; the names of
// processes in them are made fit for one line.
//
//     checkPortDialog(3000, lookup.processesOnPort(3000))  // "Port 3000 is used by: node (PID 12)"
#pragma once

#include "inventory/port_process.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace zenlot {

struct CheckPortIntent {
    static QString title();
    static QString valueRequestDialog(); // what to ask who has named no port
};

// The answer. `owners` is what the lookup of the port returned; it does not matter for a number
// that is no port.
QString checkPortDialog(std::int64_t portNumber, const std::vector<PortProcess>& owners);

// What people say or type to start the intent.
struct ZenlotAppShortcuts {
    static QString shortTitle();
    static QStringList phrases(const QString& applicationName);
};

} // namespace zenlot
