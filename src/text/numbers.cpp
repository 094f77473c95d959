#include "text/numbers.h"

#include <QList>
#include <unicode/uchar.h>

#include <algorithm>

namespace zenlot {

std::optional<qint64> decimalNumber(QStringView text, Sign plus) {
    if (plus == Sign::allowed && text.startsWith(u'+'))
        text = text.sliced(1);
    const auto isDigit = [](QChar character) { return character >= u'0' && character <= u'9'; };
    bool isNumber = std::ranges::all_of(text, isDigit);
    const qint64 number = isNumber ? text.toLongLong(&isNumber) : 0;
    return isNumber ? std::optional(number) : std::nullopt;
}

QString numericCharacters(const QString& text, int most) {
    QString kept;
    int count = 0;
    for (const uint codePoint : text.toUcs4()) {
        if (count == most)
            break;
        if (u_getNumericValue(static_cast<UChar32>(codePoint)) == U_NO_NUMERIC_VALUE)
            continue;
        kept += QChar::fromUcs4(codePoint);
        ++count;
    }
    return kept;
}

} // namespace zenlot
