// Numbers that people type or other programs write.
#pragma once

#include <QString>
#include <QStringView>

#include <limits>
#include <optional>

namespace zenlot {

enum class Sign { refused, allowed };

// The number when all of the text is its ASCII digits, with a plus sign before them where that is
// allowed. None for any other text and for numbers beyond 64 bits. No port is negative.
std::optional<qint64> decimalNumber(QStringView text, Sign plus = Sign::refused);

// The first characters that stand for a number, in whatever script. Only ASCII digits make a
// number of them; the others stay visible, so that people see what they typed.
QString numericCharacters(const QString& text, int most = std::numeric_limits<int>::max());

} // namespace zenlot
