// What a row says of a server beside its name: what runs, of which project, or what it belongs to;
// and whether there is something about it that somebody might like to know.
#pragma once

#include "inventory/origin/origin.h"

#include <QHash>
#include <QString>

#include <cstdint>
#include <utility>

namespace zenlot {

struct OriginNote {
    QString text; // "vite \u00B7 shop (fix-login)"; may be empty
    bool isOpenToNetwork{false};
    bool isLeftBehind{false};

    // The note in words, a line for each thing; empty when there is nothing to say.
    QString toolTip() const;
    // The same in one line, for those who can't see the row.
    QString description() const;

    friend bool operator==(const OriginNote&, const OriginNote&) = default;
};

// `displayName` is what the row says already.
OriginNote originNote(const Origin& origin, const QString& displayName);

// A row is one of a process and a port.
using NoteKey = std::pair<std::int64_t, std::int64_t>;
using OriginNotes = QHash<NoteKey, OriginNote>;

inline NoteKey noteKey(std::int64_t pid, std::int64_t port) {
    return {pid, port};
}

} // namespace zenlot
