#include "settings/window/exception_entries.h"

#include <algorithm>

namespace zenlot {
namespace {

constexpr qint64 kHighestPort = 65535;

bool isBlank(QChar character) {
    return character == u'\t' || character.category() == QChar::Separator_Space;
}

} // namespace

std::optional<QString> validatePort(const QString& text) {
    QStringView digits = text;
    if (digits.startsWith(u'+') || digits.startsWith(u'-'))
        digits = digits.sliced(1);
    const auto isDigit = [](QChar character) { return character >= u'0' && character <= u'9'; };
    if (digits.isEmpty() || !std::ranges::all_of(digits, isDigit))
        return std::nullopt;
    bool isInRange = false;
    const qint64 port = text.toLongLong(&isInRange);
    if (!isInRange || port < 1 || port > kHighestPort)
        return std::nullopt;
    return QString::number(port);
}

std::optional<QString> validateProcessName(const QString& text) {
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

QString withoutOuterBlanks(const QString& text) {
    qsizetype first = 0;
    qsizetype last = text.size();
    while (first < last && isBlank(text.at(first)))
        ++first;
    while (last > first && isBlank(text.at(last - 1)))
        --last;
    return text.sliced(first, last - first);
}

} // namespace zenlot
