// What is shown of a process, as it was at one moment. Everything is formatted already; an empty
// text is something that is not known.
#pragma once

#include "shell/inspector/network_connection.h"

#include <QList>
#include <QString>
#include <QtGlobal>

namespace zenlot {

struct ProcessDetails {
    qint64 parentPID{0};     // 0 when not known
    QString parentName;      // the last component of the path of its program
    QString cpuPercent;      // of one processor, over the life of the process: "3.1%"
    QString memPercent;      // of the machine's memory: "0.4%"
    QString residentMB;      // with its unit: "312 MB", "840 KB"
    QString virtualMB;       // with its unit: "401 GB", "96 MB"
    QString processStatus;   // one letter
    QString startDate;       // "Mar 5 09:07:31 2025" in the user's locale and time zone
    QString elapsed;         // since the start: "0:07", "1:00:00", "12-03:04:05"
    qint64 openFileCount{0}; // descriptors of every kind
    QList<NetworkConnection> networkConnections; // in the order of the descriptors
    QString bundleID;
    QString bundleShortVersion;
    QString bundleVersion;

    friend bool operator==(const ProcessDetails&, const ProcessDetails&) = default;
};

} // namespace zenlot
