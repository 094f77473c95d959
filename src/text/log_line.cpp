#include "text/log_line.h"

#include "text/display_line.h"

#include <QChar>

namespace zenlot {
namespace {

using namespace Qt::StringLiterals;

bool mustBeEscaped(QChar character) {
    const char16_t code = character.unicode();
    return character.category() == QChar::Other_Control || (code >= 0x2028 && code <= 0x202e) ||
           (code >= 0x2066 && code <= 0x2069);
}

QString escaped(const QString& message) {
    QString result;
    for (const QChar character : message) {
        if (character == u'\n')
            result += u"\\n"_s;
        else if (character == u'\r')
            result += u"\\r"_s;
        else if (character == u'\t')
            result += u"\\t"_s;
        else if (mustBeEscaped(character))
            result += u"\\u%1"_s.arg(character.unicode(), 4, 16, QChar(u'0'));
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
