#include "shell/intents/port_query.h"

#include "inventory/occupied_port.h"
#include "text/numbers.h"

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype kMostDigits = 9;

std::optional<std::int64_t> numberFrom(QStringView text) {
    return text.size() > kMostDigits ? std::nullopt : decimalNumber(text);
}

} // namespace

std::optional<PortQuery> parsePortQuery(const QString& text, const QStringList& phrases) {
    if (text.size() > kLongestQuery)
        return std::nullopt;
    const QString query = text.simplified();
    if (const std::optional<std::int64_t> number = numberFrom(query))
        return isValidPort(*number) ? std::optional(PortQuery{number}) : std::nullopt;

    QStringList beginnings{u":"_s, u"port "_s};
    for (const QString& phrase : phrases) {
        if (query.compare(phrase, Qt::CaseInsensitive) == 0)
            return PortQuery{std::nullopt};
        beginnings.append(phrase); // not every language has spaces
    }
    for (const QString& beginning : std::as_const(beginnings)) {
        if (!query.startsWith(beginning, Qt::CaseInsensitive))
            continue;
        if (const auto number = numberFrom(QStringView(query).sliced(beginning.size()).trimmed()))
            return PortQuery{number};
    }
    return std::nullopt;
}

} // namespace zenlot
