// What may stand on the lists of exempt ports and processes, from what somebody types.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <optional>

namespace zenlot {

// The number in plain decimal when the text is a whole decimal number, with or without a sign, that
// can be a port; none for any other text.
std::optional<QString> validatePort(const QString& text);

// The text itself, none when it is empty.
std::optional<QString> validateProcessName(const QString& text);

// Without the spaces and tabs at both ends. Line breaks stay.
QString withoutOuterBlanks(const QString& text);

} // namespace zenlot
