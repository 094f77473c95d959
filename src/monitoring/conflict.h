// A port that somebody wanted and somebody else holds, as the parts of this program tell each other
// of it.
#pragma once

#include "inventory/force_quit.h"

#include <QString>

#include <cstdint>

namespace zenlot {

struct Conflict {
    std::int64_t port{0};
    ProcessIdentity holder;
    QString processName; // of the holder; may be empty
    QString displayName;
    ForceQuitObstacle obstacle{ForceQuitObstacle::none}; // to the end of the holder

    friend bool operator==(const Conflict&, const Conflict&) = default;
};

// What somebody did about a port and a process, or that the process has ended.
struct HandledConflict {
    std::int64_t port{0};
    ProcessIdentity holder;
    QString name; // one of the holder's names, in either case

    bool settles(const Conflict& conflict) const {
        const auto isName = [this](const QString& other) {
            return name.compare(other, Qt::CaseInsensitive) == 0;
        };
        const bool isSameStart = !holder.startTime || !conflict.holder.startTime ||
                                 holder.startTime == conflict.holder.startTime;
        return port == conflict.port && holder.pid == conflict.holder.pid && isSameStart &&
               (isName(conflict.processName) || isName(conflict.displayName));
    }

    friend bool operator==(const HandledConflict&, const HandledConflict&) = default;
};

} // namespace zenlot
