// Finds out whether a text in the desktop's search asks for a port.
//
//     port 3000    :3000    3000    What is using a port in Zenlot 3000
//
// Letters count in either case and any white space counts once. A bare number asks only when it
// is a port, since people type numbers for other reasons too; behind "port", ":" or a phrase a
// wrong one deserves an answer. A phrase without a number asks without naming a port.
#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>

namespace zenlot {

struct PortQuery {
    std::optional<std::int64_t> port; // none when it has yet to be asked for; any number otherwise

    friend bool operator==(const PortQuery&, const PortQuery&) = default;
};

inline constexpr qsizetype kLongestQuery = 256;

// None when the text is about something else, or longer than anybody's question. Numbers with more
// than nine digits are none.
std::optional<PortQuery> parsePortQuery(const QString& text, const QStringList& phrases);

} // namespace zenlot
