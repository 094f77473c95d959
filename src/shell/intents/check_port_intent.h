// "Check Port": the one question that can be put to Zenlot from anywhere, and its answer in a
// sentence. The desktop's own search, its voice or a script asks; no window opens.
//
// What is said here is for any automation service to declare. Texts come in the user's language;
// the names of processes in them are made fit for one line. Any thread may use all of it.
//
//     CheckPortIntent{3000}.perform(scanner, published)  // "Port 3000 is used by: node (PID 12)"
#pragma once

#include "inventory/port_lookup.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace zenlot {

struct CheckPortIntent {
    std::int64_t portNumber{0}; // any number; one that is no port is answered too

    // Looks the port up and says who holds it. Blocks for the length of a lookup.
    QString perform(const PortScanner& scanner, const std::vector<OccupiedPort>& published) const;

    static QString title();

    // What the number is declared with, and what to ask who has named none.
    static QString portNumberTitle();
    static QString portNumberDescription();
    static QString valueRequestDialog();
};

// The answer. `owners` is what the lookup of the port returned; it does not matter for a number
// that is no port.
QString checkPortDialog(std::int64_t portNumber, const std::vector<PortProcess>& owners);

// What people say or type to start the intent, and what stands for it.
struct ZenlotAppShortcuts {
    static QString shortTitle();
    static QString systemImage(); // a name in icon themes
    static QStringList phrases(const QString& applicationName);
};

} // namespace zenlot
