#include "settings/window/exception_entries.h"

#include "inventory/occupied_port.h"
#include "text/numbers.h"

namespace zenlot {
namespace {

bool isBlank(QChar character) {
    return character == u'\t' || character.category() == QChar::Separator_Space;
}

} // namespace

std::optional<QString> validatePort(const QString& text) {
    const std::optional<qint64> port = decimalNumber(text, Sign::allowed);
    return port && isValidPort(*port) ? std::optional(QString::number(*port)) : std::nullopt;
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
