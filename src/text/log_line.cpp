#include "text/log_line.h"

#include "text/display_line.h"

#include <QChar>

namespace zenlot {
namespace {

bool mustBeEscaped(QChar character) {
    const char16_t code = character.unicode();
    return character.category() == QChar::Other_Control || (code >= 0x2028 && code <= 0x202e) ||
           (code >= 0x2066 && code <= 0x2069);
}

QString escaped(const QString& message) {
    QString result;
    for (const QChar character : message) {
        if (character == u'\n')
            result += QStringLiteral("\\n");
        else if (character == u'\r')
            result += QStringLiteral("\\r");
        else if (character == u'\t')
            result += QStringLiteral("\\t");
        else if (mustBeEscaped(character))
            result += QStringLiteral("\\u%1").arg(character.unicode(), 4, 16, QChar(u'0'));
        else
            result += character;
    }
    return result;
}

} // namespace

QString logLine(const QString& message, qsizetype longest) {
    return escaped(withEllipsis(message, longest));
}

} // namespace zenlot
